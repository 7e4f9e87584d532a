#include "Host/Library/TrackStore.h"

#include <chrono>
#include <random>

#include "Host/Library/MediaFiles.h"
#include "Host/Library/Schema.h"
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
    return std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
}

std::int64_t now() {
    return secondsSince1970(std::chrono::floor<zornic::Date::duration>(std::chrono::system_clock::now()));
}

SqlValue idOrNull(std::int64_t id) { return id == 0 ? SqlValue() : SqlValue(id); }

/** Whose album it is: a compilation without an album artist is nobody's. */
const std::string& albumArtistOf(const TrackTags& tags) {
    return tags.albumArtist.empty() && !tags.isCompilation ? tags.artist : tags.albumArtist;
}

constexpr const char* updateTrack =
    "UPDATE track SET folder_id = ?, file_name = ?, size = ?, mtime = ?, present = 1, title = ?, "
    "sort_title = ?, artist_id = ?, album_id = ?, album_artist_id = ?, genre_id = ?, composer_id = ?, "
    "podcast_id = ?, title_key = ?, artist_key = ?, album_artist_key = ?, album_key = ?, media_type = ?, "
    "is_explicit = ?, is_compilation = ?, track_number = ?, track_count = ?, disc_number = ?, "
    "duration = ?, release_date = ?, year = ?, picture = ? WHERE id = ?";
constexpr const char* insertTrack =
    "INSERT INTO track (folder_id, file_name, size, mtime, title, sort_title, artist_id, album_id, "
    "album_artist_id, genre_id, composer_id, podcast_id, title_key, artist_key, album_artist_key, album_key, "
    "media_type, is_explicit, is_compilation, track_number, track_count, disc_number, duration, "
    "release_date, year, picture, pid, date_added) VALUES "
    "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) "
    "ON CONFLICT (folder_id, file_name) DO NOTHING";

}  // namespace

/** What a track belongs to, and how it is sorted. */
struct TrackStore::Membership {
    std::string titleKey;
    const Collection &artist, &albumArtist, &album, &genre;
    const Collection *composer, *podcast;

    static std::int64_t idOf(const Collection* collection) { return collection ? collection->id : 0; }
    void count(TrackCounts& counts, std::int64_t mediaType) const {
        counts.add(mediaType, {&titleKey, &artist.key, &albumArtist.key, &album.key},
                   {artist.id, album.id, albumArtist.id, genre.id, idOf(composer), idOf(podcast)});
    }
};

TrackStore::~TrackStore() {
    if (!_isCommitted) _cache.clear();
}

void TrackStore::commit(Transaction& transaction) {
    if (!_counts.isEmpty()) _counts.store(_database);
    transaction.commit();
    _isCommitted = true;
    if (_cache.collections.size() > TrackCache::maximumEntries) _cache.clear();
}

void TrackStore::dropLateIndices() { Schema::dropLateIndices(_database); }

Statement& TrackStore::kept(std::optional<Statement>& statement, const char* sql) {
    if (statement)
        statement->reset();
    else
        statement.emplace(_database.prepare({sql, {}}));
    return *statement;
}

/** Triggers take a track out of the counts that it must be in by then. */
void TrackStore::countBefore(std::int64_t track) {
    if (_firstAdded && track >= *_firstAdded && !_counts.isEmpty()) _counts.store(_database);
}

std::unordered_map<std::int64_t, std::string> TrackStore::folders() {
    std::unordered_map<std::int64_t, std::string> folders;
    auto rows = _database.prepare({"SELECT id, path FROM folder", {}});
    while (rows.step()) folders[rows.integer(0)] = rows.text(1);
    return folders;
}

std::int64_t TrackStore::folderId(const std::filesystem::path& folder) {
    if (_cache.folderId != 0 && _cache.folder == folder.native()) return _cache.folderId;
    auto id = _database.integer({"SELECT id FROM folder WHERE path = ?", {folder.native()}});
    if (id == 0) {
        _database.run({"INSERT INTO folder (path) VALUES (?)", {folder.native()}});
        id = _database.lastInsertedRow();
    }
    _cache.folder = folder.native();
    return _cache.folderId = id;
}

void TrackStore::setFolderPicture(std::int64_t folder, const std::string& fileName, std::int64_t stamp) {
    _database.run(
        {"UPDATE folder SET picture = ?, picture_stamp = ? WHERE id = ?", {fileName, stamp, folder}});
}

const TrackStore::Collection& TrackStore::collection(std::int64_t kind, const std::string& name,
                                                     const std::string& sortName, const Collection& owner) {
    _cacheKey.assign(1, static_cast<char>(kind));
    _cacheKey.append(reinterpret_cast<const char*>(&owner.id), sizeof owner.id);
    _cacheKey.append(sortName).append(1, '\n').append(name);
    if (const auto cached = _cache.collections.find(_cacheKey); cached != _cache.collections.end())
        return cached->second;
    return _cache.collections.emplace(_cacheKey, storedCollection(kind, name, sortName, owner)).first->second;
}

TrackStore::Collection TrackStore::storedCollection(std::int64_t kind, const std::string& name,
                                                    const std::string& sortName, const Collection& owner) {
    const std::string folded = SortKey::folded(name);
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
    if (!_counts.isEmpty()) _counts.store(_database);
    for (auto& [name, known] : _cache.collections)
        if (known.id == id) known.key = key;
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
                           "WHERE t.mtime = ? AND t.size = ? AND t.file_name = ?",
                           {file.mtime, file.size, file.name}});
    while (rows.step())
        if (!FileStamp::of(std::filesystem::path(rows.text(1)) / file.name)) return rows.integer(0);
    return 0;
}

std::int64_t TrackStore::trackOf(const MusicFile& file, std::int64_t folder) {
    return _database.integer(
        {"SELECT id FROM track WHERE folder_id = ? AND file_name = ?", {folder, file.name}});
}

TrackStore::Membership TrackStore::membershipOf(const TrackTags& tags) {
    const std::string& owner = albumArtistOf(tags);
    const std::string& ownerSort = &owner == &tags.artist ? tags.sortArtist : tags.sortAlbumArtist;
    const Collection& ownerRow = collection(albumArtist, owner, ownerSort);
    const bool isPodcast = tags.mediaType == zornic::MediaType::Podcast && !tags.albumTitle.empty();
    return {_sortKey.make(tags.title, tags.sortTitle),
            collection(artist, tags.artist, tags.sortArtist),
            ownerRow,
            collection(album, tags.albumTitle, tags.sortAlbumTitle, ownerRow),
            collection(genre, tags.genre, {}),
            tags.composer.empty() ? nullptr : &collection(composer, tags.composer, tags.sortComposer),
            isPodcast ? &collection(podcast, tags.albumTitle, tags.sortAlbumTitle) : nullptr};
}

void TrackStore::store(const MusicFile& file, const TrackTags& tags, const Place& place) {
    const Membership member = membershipOf(tags);
    const std::int64_t folder = folderId(file.folder);
    std::int64_t track = place.track ? *place.track : trackOf(file, folder);
    if (track == 0 && place.mayHaveMoved) track = movedTrack(file);
    if (track != 0) countBefore(track);
    Statement& row = track != 0 ? kept(_update, updateTrack) : kept(_insert, insertTrack);
    row.bind(folder).bind(file.name).bind(file.size).bind(file.mtime).bind(tags.title).bind(tags.sortTitle);
    row.bind(member.artist.id).bind(member.album.id).bind(member.albumArtist.id).bind(member.genre.id);
    row.bind(idOrNull(Membership::idOf(member.composer))).bind(idOrNull(Membership::idOf(member.podcast)));
    row.bind(Blob{member.titleKey}).bind(Blob{member.artist.key}).bind(Blob{member.albumArtist.key});
    row.bind(Blob{member.album.key}).bind(tags.mediaType).bind(std::int64_t{tags.isExplicit});
    row.bind(std::int64_t{tags.isCompilation}).bind(std::int64_t{tags.trackNumber});
    row.bind(std::int64_t{tags.trackCount}).bind(std::int64_t{tags.discNumber}).bind(tags.duration);
    row.bind(tags.releaseDate ? SqlValue(secondsSince1970(*tags.releaseDate)) : SqlValue());
    row.bind(std::int64_t{tags.year}).bind(tags.picture);
    if (track != 0) {
        row.bind(track).run();
        return;
    }
    row.bind(newPersistentID()).bind(now()).run();
    // Another program on the same file may have been quicker.
    if (_database.changes() == 0) return store(file, tags, Place{std::nullopt, false});
    member.count(_counts, tags.mediaType);
    if (!_firstAdded) _firstAdded = _database.lastInsertedRow();
}

void TrackStore::markPresent(std::int64_t track, std::int64_t folder, bool isPresent) {
    countBefore(track);
    kept(_mark, "UPDATE track SET present = ? WHERE id = ? AND folder_id = ?")
        .bind(std::int64_t{isPresent})
        .bind(track)
        .bind(folder)
        .run();
}

std::int64_t TrackStore::hideFolder(std::int64_t folder) {
    if (!_counts.isEmpty()) _counts.store(_database);
    _database.run({"UPDATE track SET present = 0 WHERE folder_id = ? AND present = 1", {folder}});
    return _database.changes();
}

void TrackStore::note(const MusicFile& file, FilePart part, const std::string& reason) {
    _database.run(
        {"INSERT OR REPLACE INTO unreadable (folder_id, file_name, part, size, mtime, reason) "
         "VALUES (?, ?, ?, ?, ?, ?)",
         {folderId(file.folder), file.name, static_cast<std::int64_t>(part), file.size, file.mtime, reason}});
}

void TrackStore::noteUnreadable(const MusicFile& file, const std::string& reason) {
    note(file, FilePart::Tags, reason);
    const std::int64_t folder = folderId(file.folder);
    if (const auto track = trackOf(file, folder)) markPresent(track, folder, false);
}

void TrackStore::noteUnreadablePicture(const MusicFile& file, const std::string& reason) {
    note(file, FilePart::Picture, reason);
}

bool TrackStore::isUnreadablePicture(Database& database, const MusicFile& file) {
    return database.integer({"SELECT EXISTS (SELECT 1 FROM folder f JOIN unreadable u ON u.folder_id = f.id "
                             "WHERE f.path = ? AND u.file_name = ? AND u.part = ? AND u.size = ? AND "
                             "u.mtime = ?)",
                             {file.folder.native(), file.name, static_cast<std::int64_t>(FilePart::Picture),
                              file.size, file.mtime}}) != 0;
}

void TrackStore::forgetUnreadable(std::int64_t folder, const std::string& fileName) {
    _database.run({"DELETE FROM unreadable WHERE folder_id = ? AND file_name = ?", {folder, fileName}});
}

KnownFiles TrackStore::playlistFiles(Database& database) {
    KnownFiles files;
    auto rows =
        database.prepare({"SELECT path, id, size, mtime, present FROM playlist WHERE path IS NOT NULL", {}});
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
    _cache.clear();
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
