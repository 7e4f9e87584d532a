#include "Host/Library/TrackStore.h"

#include <chrono>
#include <random>

#include "Host/Library/MediaFiles.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

namespace {

using zornic::MediaGrouping;

constexpr auto album = static_cast<std::int64_t>(MediaGrouping::Album);
constexpr auto artist = static_cast<std::int64_t>(MediaGrouping::Artist);
constexpr auto albumArtist = static_cast<std::int64_t>(MediaGrouping::AlbumArtist);
constexpr auto composer = static_cast<std::int64_t>(MediaGrouping::Composer);
constexpr auto genre = static_cast<std::int64_t>(MediaGrouping::Genre);
constexpr auto podcast = static_cast<std::int64_t>(MediaGrouping::PodcastTitle);

/** Random and positive, so that it is the same number signed and unsigned. */
std::int64_t newPersistentID() {
    thread_local std::mt19937_64 generator{std::random_device{}()};
    return static_cast<std::int64_t>(generator() >> 1 | 1);
}

std::int64_t secondsSince1970(zornic::Date date) {
    return std::chrono::duration_cast<std::chrono::seconds>(date.time_since_epoch()).count();
}

std::int64_t now() { return secondsSince1970(std::chrono::system_clock::now()); }

SqlValue idOrNull(std::int64_t id) { return id == 0 ? SqlValue() : SqlValue(id); }

/** Whose album it is: a compilation without an album artist is nobody's. */
const std::string& albumArtistOf(const TrackTags& tags) {
    return tags.albumArtist.empty() && !tags.isCompilation ? tags.artist : tags.albumArtist;
}

}  // namespace

KnownFiles TrackStore::filesOfFolder(const std::filesystem::path& folder) {
    KnownFiles files;
    auto rows =
        _database.prepare({"SELECT t.file_name, t.id, t.size, t.mtime, t.present FROM folder f "
                           "JOIN track t ON t.folder_id = f.id WHERE f.path = ?",
                           {folder.string()}});
    while (rows.step())
        files[rows.text(0)] = {rows.integer(1), rows.integer(2), rows.integer(3), rows.integer(4) != 0};
    return files;
}

std::unordered_map<std::int64_t, std::string> TrackStore::folders() {
    std::unordered_map<std::int64_t, std::string> folders;
    auto rows = _database.prepare({"SELECT id, path FROM folder", {}});
    while (rows.step()) folders[rows.integer(0)] = rows.text(1);
    return folders;
}

std::int64_t TrackStore::folderId(const std::filesystem::path& folder) {
    if (const auto id = _database.integer({"SELECT id FROM folder WHERE path = ?", {folder.string()}}))
        return id;
    _database.run({"INSERT INTO folder (path) VALUES (?)", {folder.string()}});
    return _database.lastInsertedRow();
}

bool TrackStore::setFolderPicture(std::int64_t folder, const std::string& fileName, std::int64_t stamp) {
    _database.run(
        {"UPDATE folder SET picture = ?1, picture_stamp = ?2 "
         "WHERE id = ?3 AND (picture <> ?1 OR picture_stamp <> ?2)",
         {fileName, stamp, folder}});
    return _database.changes() > 0;
}

TrackStore::Collection TrackStore::collection(std::int64_t kind, const std::string& name,
                                              const std::string& sortName, const Collection& owner) {
    const std::string folded = SortKey::folded(name);
    const std::string cacheKey =
        std::to_string(kind) + ' ' + std::to_string(owner.id) + ' ' + sortName + '\n' + folded;
    if (const auto cached = _collections.find(cacheKey); cached != _collections.end()) return cached->second;
    return _collections[cacheKey] = storedCollection(kind, folded, name, sortName, owner);
}

TrackStore::Collection TrackStore::storedCollection(std::int64_t kind, const std::string& folded,
                                                    const std::string& name, const std::string& sortName,
                                                    const Collection& owner) {
    auto found =
        _database.prepare({"SELECT id, sort_key, sort_name FROM collection "
                           "WHERE kind = ? AND folded = ? AND owner_id = ?",
                           {kind, folded, owner.id}});
    if (found.step()) {
        Collection known{found.integer(0), found.text(1)};
        if (!sortName.empty() && found.text(2).empty()) {
            known.key = _sortKey.make(name, sortName);
            sortAgain(kind, known.id, sortName, known.key);
        }
        _database.run({"UPDATE collection SET name = ?1 WHERE id = ?2 AND name <> ?1", {name, known.id}});
        return known;
    }
    const std::string key = _sortKey.make(name, sortName);
    _database.run(
        {"INSERT INTO collection (pid, kind, name, sort_name, folded, owner_id, sort_key, owner_key) "
         "VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
         {newPersistentID(), kind, name, sortName, folded, owner.id, Blob{key}, Blob{owner.key}}});
    return {_database.lastInsertedRow(), key};
}

void TrackStore::sortAgain(std::int64_t kind, std::int64_t id, const std::string& sortName,
                           const std::string& key) {
    _database.run(
        {"UPDATE collection SET sort_name = ?, sort_key = ? WHERE id = ?", {sortName, Blob{key}, id}});
    const auto update = [&](const std::string& sql) { _database.run({sql, {Blob{key}, id}}); };
    if (kind == artist) update("UPDATE track SET artist_key = ? WHERE artist_id = ?");
    if (kind == album) update("UPDATE track SET album_key = ? WHERE album_id = ?");
    if (kind == albumArtist) update("UPDATE track SET album_artist_key = ? WHERE album_artist_id = ?");
    if (kind == albumArtist) update("UPDATE collection SET owner_key = ? WHERE owner_id = ?");
}

std::int64_t TrackStore::movedTrack(const MusicFile& file) {
    auto rows =
        _database.prepare({"SELECT t.id, f.path FROM track t JOIN folder f ON f.id = t.folder_id "
                           "WHERE t.file_name = ? AND t.size = ? AND t.mtime = ?",
                           {file.name, file.size, file.mtime}});
    while (rows.step())
        if (!FileStamp::of(std::filesystem::path(rows.text(1)) / file.name)) return rows.integer(0);
    return 0;
}

std::int64_t TrackStore::trackOf(const MusicFile& file, std::int64_t folder) {
    const auto id = _database.integer(
        {"SELECT id FROM track WHERE folder_id = ? AND file_name = ?", {folder, file.name}});
    return id ? id : movedTrack(file);
}

void TrackStore::store(const MusicFile& file, const TrackTags& tags) {
    const std::string& owner = albumArtistOf(tags);
    const std::string& ownerSort = &owner == &tags.artist ? tags.sortArtist : tags.sortAlbumArtist;
    const auto artistRow = collection(artist, tags.artist, tags.sortArtist);
    const auto albumArtistRow = collection(albumArtist, owner, ownerSort);
    const auto albumRow = collection(album, tags.albumTitle, tags.sortAlbumTitle, albumArtistRow);
    const auto genreRow = collection(genre, tags.genre, {});
    const auto composerRow =
        tags.composer.empty() ? Collection() : collection(composer, tags.composer, tags.sortComposer);
    const auto podcastRow = tags.mediaType == zornic::MediaType::Podcast && !tags.albumTitle.empty()
                                ? collection(podcast, tags.albumTitle, tags.sortAlbumTitle)
                                : Collection();
    const std::int64_t folder = folderId(file.folder);
    const std::int64_t known = trackOf(file, folder);
    SqlQuery sql{
        known
            ? "UPDATE track SET folder_id = ?, file_name = ?, size = ?, mtime = ?, present = 1, title = ?, "
              "sort_title = ?, artist_id = ?, album_id = ?, album_artist_id = ?, genre_id = ?, "
              "composer_id = ?, podcast_id = ?, title_key = ?, artist_key = ?, album_artist_key = ?, "
              "album_key = ?, media_type = ?, is_explicit = ?, is_compilation = ?, track_number = ?, "
              "track_count = ?, disc_number = ?, duration = ?, release_date = ?, year = ?, picture = ? "
              "WHERE id = ?"
            : "INSERT INTO track (folder_id, file_name, size, mtime, title, sort_title, artist_id, album_id, "
              "album_artist_id, genre_id, composer_id, podcast_id, title_key, artist_key, album_artist_key, "
              "album_key, media_type, is_explicit, is_compilation, track_number, track_count, disc_number, "
              "duration, release_date, year, picture, pid, date_added) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
              "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {folder,
         file.name,
         file.size,
         file.mtime,
         tags.title,
         tags.sortTitle,
         artistRow.id,
         albumRow.id,
         albumArtistRow.id,
         genreRow.id,
         idOrNull(composerRow.id),
         idOrNull(podcastRow.id),
         Blob{_sortKey.make(tags.title, tags.sortTitle)},
         Blob{artistRow.key},
         Blob{albumArtistRow.key},
         Blob{albumRow.key},
         tags.mediaType,
         std::int64_t{tags.isExplicit},
         std::int64_t{tags.isCompilation},
         std::int64_t{tags.trackNumber},
         std::int64_t{tags.trackCount},
         std::int64_t{tags.discNumber},
         tags.duration,
         tags.releaseDate ? SqlValue(secondsSince1970(*tags.releaseDate)) : SqlValue(),
         std::int64_t{tags.year},
         tags.picture}};
    if (known) {
        sql.values.emplace_back(known);
    } else {
        sql.values.emplace_back(newPersistentID());
        sql.values.emplace_back(now());
    }
    _database.run(sql);
}

void TrackStore::markPresent(std::int64_t track, bool isPresent) {
    _database.run({"UPDATE track SET present = ? WHERE id = ?", {std::int64_t{isPresent}, track}});
}

std::int64_t TrackStore::hideFolder(std::int64_t folder) {
    _database.run({"UPDATE track SET present = 0 WHERE folder_id = ? AND present = 1", {folder}});
    return _database.changes();
}

KnownFiles TrackStore::playlistFiles() {
    KnownFiles files;
    auto rows =
        _database.prepare({"SELECT path, id, size, mtime, present FROM playlist WHERE path IS NOT NULL", {}});
    while (rows.step())
        files[rows.text(0)] = {rows.integer(1), rows.integer(2), rows.integer(3), rows.integer(4) != 0};
    return files;
}

std::int64_t TrackStore::trackAt(const std::filesystem::path& file) {
    return _database.integer(
        {"SELECT t.id FROM folder f JOIN track t ON t.folder_id = f.id "
         "WHERE f.path = ? AND t.file_name = ?",
         {file.parent_path().string(), file.filename().string()}});
}

void TrackStore::storePlaylist(const std::filesystem::path& file, std::int64_t size, std::int64_t mtime,
                               const PlaylistFile& list) {
    _database.run(
        {"INSERT INTO playlist (pid, name, sort_key, is_deletable, path, size, mtime) "
         "VALUES (?, ?, ?, 0, ?, ?, ?) ON CONFLICT (path) DO UPDATE SET name = excluded.name, "
         "sort_key = excluded.sort_key, size = excluded.size, mtime = excluded.mtime, present = 1",
         {newPersistentID(), list.name, Blob{_sortKey.make(list.name)}, file.string(), size, mtime}});
    const auto playlist = _database.integer({"SELECT id FROM playlist WHERE path = ?", {file.string()}});
    _database.run({"DELETE FROM playlist_item WHERE playlist_id = ?", {playlist}});
    std::int64_t position = 0;
    for (const auto& entry : list.entries)
        if (const auto track = trackAt(entry))
            _database.run({"INSERT INTO playlist_item VALUES (?, ?, ?)", {playlist, position++, track}});
}

void TrackStore::hidePlaylist(std::int64_t playlist) {
    _database.run({"UPDATE playlist SET present = 0 WHERE id = ?", {playlist}});
}

void TrackStore::removePlaylist(std::int64_t persistentID) {
    _database.run({"DELETE FROM playlist WHERE pid = ? AND is_deletable = 1", {persistentID}});
}

void TrackStore::notePlayed(std::int64_t persistentID) {
    _database.run({"UPDATE track SET play_count = play_count + 1, last_played = ? WHERE pid = ?",
                   {now(), persistentID}});
}

bool TrackStore::areSortKeysCurrent() {
    auto row = _database.prepare({"SELECT value FROM meta WHERE key = 'sort keys'", {}});
    return row.step() && row.text(0) == _sortKey.stamp();
}

void TrackStore::renewSortKeys() {
    _database.execute("DELETE FROM section_title");
    for (const auto& title : _sortKey.indexTitles().titles())
        _database.run({"INSERT INTO section_title VALUES (?, ?, ?)",
                       {Blob{title.section}, std::int64_t{title.script}, title.text}});
    const auto renew = [this](const std::string& select, const std::string& update) {
        auto rows = _database.prepare({select, {}});
        while (rows.step())
            _database.run({update, {Blob{_sortKey.make(rows.text(1), rows.text(2))}, rows.integer(0)}});
    };
    renew("SELECT id, name, sort_name FROM collection", "UPDATE collection SET sort_key = ? WHERE id = ?");
    renew("SELECT id, name, '' FROM playlist", "UPDATE playlist SET sort_key = ? WHERE id = ?");
    renew("SELECT id, title, sort_title FROM track", "UPDATE track SET title_key = ? WHERE id = ?");
    _database.execute(
        "UPDATE collection SET owner_key = (SELECT sort_key FROM collection o WHERE o.id = "
        "collection.owner_id) "
        "WHERE owner_id <> 0;"
        "UPDATE track SET artist_key = (SELECT sort_key FROM collection WHERE id = artist_id),"
        "album_key = (SELECT sort_key FROM collection WHERE id = album_id),"
        "album_artist_key = (SELECT sort_key FROM collection WHERE id = album_artist_id)");
    _database.run({"INSERT OR REPLACE INTO meta VALUES ('sort keys', ?)", {_sortKey.stamp()}});
}

}  // namespace helmo
