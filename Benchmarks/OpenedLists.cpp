#include "Benchmarks/OpenedLists.h"

#include <stdexcept>

#include "Benchmarks/Floors/ListRows.h"
#include "Tools/LargeLibrary/LargeLibrary.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"

namespace helmo::benchmarks {

using namespace zornic;

namespace {

using Path = std::filesystem::path;

constexpr const char* albums = "1";
constexpr const char* artists = "2";
constexpr const char* composers = "4";
constexpr const char* genres = "5";
/** Music and music videos; audiobooks. */
constexpr const char* music = "2049";
constexpr const char* books = "4";

std::string areOf(const std::string& kind, const std::string& types) {
    return "c.kind = " + kind + " AND c.media_types <> 0 AND (c.media_types & " + types + ") <> 0";
}

std::string numberFrom(const Path& database, const std::string& sql) {
    return std::to_string(ListRows(database, sql).count());
}

/** Of one kind, each with its owner and with the cover of a track that `link` leads to. */
OpenedList collections(std::string name, const char* screen, const std::string& kind,
                       const std::string& types, const std::string& link) {
    OpenedList list{name, name, screen, {}, {}, {}};
    list.count = "SELECT COUNT(*) FROM collection c WHERE " + areOf(kind, types);
    list.rows = "SELECT c.name, o.name, (SELECT t.picture FROM track t WHERE t." + link +
                " = c.id AND t.present = 1 LIMIT 1) FROM collection c "
                "LEFT JOIN collection o ON o.id = c.owner_id WHERE " +
                areOf(kind, types) + " ORDER BY c.sort_key, c.owner_key, c.id LIMIT ?";
    return list;
}

OpenedList songs() {
    return {"songs",
            "songs",
            ZRNSongsViewControllerIdentifier,
            {},
            "SELECT COUNT(*) FROM track t WHERE t.present = 1 AND (t.media_type & 2049) <> 0",
            "SELECT t.title, a.name, b.name, t.picture FROM track t JOIN collection a ON a.id = t.artist_id "
            "JOIN collection b ON b.id = t.album_id WHERE t.present = 1 ORDER BY t.title_key, t.id LIMIT ?"};
}

OpenedList playlists() {
    // Mixes that helmo made meanwhile have a tab of their own.
    const std::string are = "FROM playlist WHERE present = 1 AND parent_id IS NULL AND is_brivo_mix = 0";
    return {"playlists",
            "playlists",
            ZRNPlaylistsViewControllerIdentifier,
            {},
            "SELECT COUNT(*) " + are,
            "SELECT name " + are + " ORDER BY sort_key, id LIMIT ?"};
}

OpenedList compilations() {
    const std::string are = "t.present = 1 AND t.is_compilation = 1 AND (t.media_type & 1) <> 0";
    return {
        "compilations",
        "compilations",
        ZRNCompilationsViewControllerIdentifier,
        {},
        "SELECT COUNT(DISTINCT t.album_id) FROM track t INDEXED BY track_of_compilation WHERE " + are,
        "SELECT c.name, o.name, g.picture FROM (SELECT t.album_id, MAX(t.picture) AS picture FROM track t "
        "INDEXED BY track_of_compilation "
        "WHERE " +
            are +
            " GROUP BY t.album_id) g JOIN collection c ON c.id = g.album_id "
            "LEFT JOIN collection o ON o.id = c.owner_id ORDER BY c.sort_key, c.owner_key, c.id LIMIT ?"};
}

/** Where the collection `id` stands in the list of its kind. */
std::string placeOf(const std::string& kind, const std::string& id) {
    return "SELECT COUNT(*) FROM collection c WHERE " + areOf(kind, music) +
           " AND (c.sort_key, c.owner_key, c.id) < (SELECT sort_key, owner_key, id FROM collection WHERE id "
           "= " +
           id + ")";
}

/** The row number of the collection of a kind that has most tracks. */
std::string largest(const Path& database, const std::string& kind) {
    return numberFrom(
        database,
        "SELECT n.collection_id FROM collection_count n JOIN collection d ON d.id = n.collection_id "
        "WHERE "
        "d.kind = " +
            kind + " AND d.name <> '' AND n.media_type = 1 ORDER BY n.tracks DESC LIMIT 1");
}

OpenedList albumsOfArtist(const Path& database) {
    const std::string artist = largest(database, artists);
    return {
        "artist_albums",
        "artists",
        ZRNArtistsViewControllerIdentifier,
        placeOf(artists, artist),
        "SELECT COUNT(*), COUNT(DISTINCT album_id) FROM track WHERE present = 1 AND artist_id = " + artist,
        "SELECT t.title, t.track_number, t.duration, c.name, t.picture FROM track t "
        "JOIN collection c ON c.id = t.album_id WHERE t.present = 1 AND t.artist_id = " +
            artist +
            " ORDER BY (SELECT MIN(y.year) FROM track y WHERE y.album_id = t.album_id AND y.present = 1), "
            "c.sort_key, t.album_id, t.disc_number, t.track_number, t.id LIMIT ?"};
}

OpenedList tracksOfAlbum(const Path& database) {
    const std::string album = largest(database, albums);
    return {"album_tracks",
            "albums",
            ZRNAlbumsViewControllerIdentifier,
            placeOf(albums, album),
            "SELECT COUNT(*) FROM track WHERE present = 1 AND album_id = " + album,
            "SELECT t.title, t.track_number, t.duration, t.picture FROM track t WHERE t.present = 1 AND "
            "t.album_id = " +
                album + " ORDER BY t.disc_number, t.track_number, t.id LIMIT ?"};
}

OpenedList artistsOfGenre(const Path& database) {
    const std::string genre = largest(database, genres);
    const std::string are = "t.present = 1 AND t.genre_id = " + genre;
    return {
        "genre_artists",
        "genres",
        ZRNGenresViewControllerIdentifier,
        placeOf(genres, genre),
        "SELECT COUNT(DISTINCT t.artist_id) FROM track t WHERE " + are,
        "SELECT c.name, g.picture FROM (SELECT t.artist_id, MIN(t.id) AS id FROM track t WHERE " + are +
            " GROUP BY t.artist_id) f JOIN track g ON g.id = f.id JOIN collection c ON c.id = f.artist_id "
            "ORDER BY c.sort_key, c.id LIMIT ?"};
}

OpenedList songsOfPlaylist(const Path& database) {
    const std::string playlist = numberFrom(
        database, "SELECT id FROM playlist WHERE name = '" + std::string(large::longestPlaylistName) + "'");
    const std::string are =
        "FROM playlist_item i JOIN track t ON t.id = i.track_id WHERE t.present = 1 AND i.playlist_id = " +
        playlist;
    return {"playlist_songs",
            "playlists",
            ZRNPlaylistsViewControllerIdentifier,
            "SELECT COUNT(*) FROM playlist p WHERE p.present = 1 AND p.parent_id IS NULL AND (p.sort_key, "
            "p.id) < "
            "(SELECT sort_key, id FROM playlist WHERE id = " +
                playlist + ")",
            "SELECT COUNT(*) " + are,
            "SELECT t.title, (SELECT name FROM collection WHERE id = t.artist_id), "
            "(SELECT name FROM collection WHERE id = t.album_id), t.picture " +
                are + " ORDER BY i.position LIMIT ?"};
}

}  // namespace

const std::vector<std::string>& openedLists() {
    static const std::vector<std::string> names{
        "playlists", "artists",    "songs",         "albums",       "genres",        "compilations",
        "composers", "audiobooks", "artist_albums", "album_tracks", "genre_artists", "playlist_songs"};
    return names;
}

OpenedList openedList(const Path& database, const std::string& name) {
    if (name == "playlists") return playlists();
    if (name == "artists")
        return collections(name, ZRNArtistsViewControllerIdentifier, artists, music, "artist_id");
    if (name == "songs") return songs();
    if (name == "albums")
        return collections(name, ZRNAlbumsViewControllerIdentifier, albums, music, "album_id");
    if (name == "genres")
        return collections(name, ZRNGenresViewControllerIdentifier, genres, music, "genre_id");
    if (name == "compilations") return compilations();
    if (name == "composers")
        return collections(name, ZRNComposersViewControllerIdentifier, composers, music, "composer_id");
    if (name == "audiobooks")
        return collections(name, ZRNAudiobooksViewControllerIdentifier, albums, books, "album_id");
    if (name == "artist_albums") return albumsOfArtist(database);
    if (name == "album_tracks") return tracksOfAlbum(database);
    if (name == "genre_artists") return artistsOfGenre(database);
    if (name == "playlist_songs") return songsOfPlaylist(database);
    throw std::runtime_error("no list is called " + name);
}

}  // namespace helmo::benchmarks
