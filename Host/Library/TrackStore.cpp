#include "Host/Library/TrackStore.h"

#include <chrono>

#include "Host/Library/AlbumFolder.h"
#include "Host/Library/ChapterTable.h"
#include "Host/Library/NewPersistentID.h"
#include "Host/Library/Schema.h"
#include "Host/Library/TrackIdentity.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

namespace {

using zornic::MediaGrouping;

constexpr auto artist = static_cast<std::int64_t>(MediaGrouping::Artist);
constexpr auto composer = static_cast<std::int64_t>(MediaGrouping::Composer);
constexpr auto genre = static_cast<std::int64_t>(MediaGrouping::Genre);
constexpr auto podcast = static_cast<std::int64_t>(MediaGrouping::PodcastTitle);

std::int64_t secondsSince1970(zornic::Date date) {
    return std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
}

std::int64_t now() {
    return secondsSince1970(std::chrono::floor<zornic::Date::duration>(std::chrono::system_clock::now()));
}

SqlValue idOrNull(std::int64_t id) { return id == 0 ? SqlValue() : SqlValue(id); }

constexpr const char* updateTrack =
    "UPDATE track SET folder_id = ?, file_name = ?, size = ?, mtime = ?, present = 1, title = ?, "
    "sort_title = ?, artist_id = ?, album_id = ?, album_artist_id = ?, genre_id = ?, composer_id = ?, "
    "podcast_id = ?, title_key = ?, artist_key = ?, album_artist_key = ?, album_key = ?, media_type = ?, "
    "is_explicit = ?, is_compilation = ?, track_number = ?, track_count = ?, disc_number = ?, "
    "duration = ?, release_date = ?, year = ?, picture = ?, album_claim = ?, identity = ? WHERE id = ?";
constexpr const char* insertTrack =
    "INSERT INTO track (folder_id, file_name, size, mtime, title, sort_title, artist_id, album_id, "
    "album_artist_id, genre_id, composer_id, podcast_id, title_key, artist_key, album_artist_key, album_key, "
    "media_type, is_explicit, is_compilation, track_number, track_count, disc_number, duration, "
    "release_date, year, picture, album_claim, identity, pid, date_added) VALUES "
    "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) "
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
    for (const auto& [group, returned] : _unsettled) _albums.settleAgain(group, returned);
    _unsettled.clear();
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

std::int64_t TrackStore::folderId(const std::filesystem::path& folder) {
    if (_cache.folderId != 0 && _cache.folder == folder.native()) return _cache.folderId;
    auto row =
        _database.prepare({"SELECT id, IFNULL(disc_of, id) FROM folder WHERE path = ?", {folder.native()}});
    std::int64_t id = 0, place = 0;
    if (row.step()) {
        id = row.integer(0);
        place = row.integer(1);
    } else {
        const AlbumFolder album = AlbumFolder::of(folder);
        if (album.disc != 0 && album.path != folder) place = folderId(album.path);
        _database.run(
            {"INSERT INTO folder (path, disc_of) VALUES (?, ?)", {folder.native(), idOrNull(place)}});
        id = _database.lastInsertedRow();
        if (place == 0) place = id;
    }
    _cache.folder = folder.native();
    _cache.place = place;
    return _cache.folderId = id;
}

std::int64_t TrackStore::placeId(const std::filesystem::path& folder) {
    folderId(folder);
    return _cache.place;
}

void TrackStore::setFolderPicture(std::int64_t folder, const std::string& fileName, std::int64_t stamp) {
    _database.run(
        {"UPDATE folder SET picture = ?, picture_stamp = ? WHERE id = ?", {fileName, stamp, folder}});
}

std::int64_t TrackStore::trackOf(const MusicFile& file, std::int64_t folder) {
    return _database.integer(
        {"SELECT id FROM track WHERE folder_id = ? AND file_name = ?", {folder, file.name}});
}

TrackStore::Membership TrackStore::membershipOf(const TrackTags& tags, const AlbumGroups::Rows& album) {
    const bool isPodcast = tags.mediaType == zornic::MediaType::Podcast && !tags.albumTitle.empty();
    return {_sortKey.make(tags.title, tags.sortTitle),
            _collections.row(artist, tags.artist, tags.sortArtist),
            album.owner,
            album.album,
            _collections.row(genre, tags.genre, {}),
            tags.composer.empty() ? nullptr : &_collections.row(composer, tags.composer, tags.sortComposer),
            isPodcast ? &_collections.row(podcast, tags.albumTitle, tags.sortAlbumTitle) : nullptr};
}

std::int64_t TrackStore::knownTrack(const MusicFile& file, const Place& place) {
    std::int64_t track = place.track ? *place.track : trackOf(file, folderId(file.folder));
    if (track == 0 && place.mayHaveMoved)
        track = TrackIdentity::movedTrack(_database, file.name, file.size, file.mtime, _found);
    if (track != 0) _found.insert(track);
    return track;
}

std::vector<std::int64_t> TrackStore::knownTracks(const std::vector<NewTrack>& tracks) {
    std::vector<std::int64_t> known;
    for (const auto& [file, tags, place] : tracks) known.push_back(knownTrack(file, place));
    for (std::size_t at = 0; at < tracks.size(); ++at) {
        const auto& [file, tags, place] = tracks[at];
        if (known[at] != 0 || !place.mayHaveMoved) continue;
        known[at] = TrackIdentity::lostTrack(_database, TrackIdentity::of(*tags), tags->duration, _found);
        if (known[at] != 0) _found.insert(known[at]);
    }
    return known;
}

AlbumGroups::Newcomer TrackStore::newcomerOf(const TrackTags& tags, std::int64_t track,
                                             const AlbumGroups::Key& key) {
    AlbumGroups::Newcomer newcomer{AlbumGroups::fileOf(tags), track};
    if (const auto old = track != 0 ? _albums.whereIs(track) : std::nullopt) {
        newcomer.place = old->first.place;
        newcomer.album = old->second;
        if (old->first != key && !old->first.folded.empty()) _unsettled[old->first];
    }
    return newcomer;
}

std::vector<AlbumGroups::Rows> TrackStore::albumsOf(const std::vector<NewTrack>& tracks,
                                                    const std::vector<std::int64_t>& known) {
    struct Group {
        AlbumGroups::Title title;
        std::vector<AlbumGroups::Newcomer> newcomers;
        std::vector<std::size_t> tracks;
    };
    std::map<AlbumGroups::Key, Group> groups;
    std::vector<AlbumGroups::Rows> albums(tracks.size());
    AlbumGroups::Key key;
    for (std::size_t at = 0; at < tracks.size(); ++at) {
        const TrackTags& tags = *tracks[at].tags;
        const bool isAsBefore = at > 0 && tags.albumTitle == tracks[at - 1].tags->albumTitle &&
                                tracks[at].file.folder.native() == tracks[at - 1].file.folder.native();
        if (!isAsBefore) key = {placeId(tracks[at].file.folder), SortKey::folded(tags.albumTitle)};
        AlbumGroups::Newcomer newcomer = newcomerOf(tags, known[at], key);
        if (key.folded.empty()) {
            albums[at] = _albums.alone(newcomer.file, {}, key.place);
            continue;
        }
        Group& group = groups[key];
        if (group.tracks.empty()) group.title = {tags.albumTitle, tags.sortAlbumTitle};
        group.newcomers.push_back(std::move(newcomer));
        group.tracks.push_back(at);
    }
    for (auto& [place, group] : groups) {
        auto rows = _albums.settle(place, group.title, std::move(group.newcomers));
        for (std::size_t at = 0; at < rows.size(); ++at) albums[group.tracks[at]] = std::move(rows[at]);
    }
    return albums;
}

void TrackStore::store(const std::vector<NewTrack>& tracks) {
    const auto known = knownTracks(tracks);
    const auto albums = albumsOf(tracks, known);
    for (std::size_t at = 0; at < tracks.size(); ++at)
        storeRow(tracks[at].file, *tracks[at].tags, known[at], albums[at]);
}

void TrackStore::store(const MusicFile& file, const TrackTags& tags, const Place& place) {
    const AlbumGroups::Title title{tags.albumTitle, tags.sortAlbumTitle};
    storeRow(file, tags, knownTrack(file, place),
             _albums.alone(AlbumGroups::fileOf(tags), title, placeId(file.folder)));
}

void TrackStore::storeRow(const MusicFile& file, const TrackTags& tags, std::int64_t track,
                          const AlbumGroups::Rows& album) {
    const Membership member = membershipOf(tags, album);
    const std::int64_t folder = folderId(file.folder);
    const bool isKnownHere = track != 0 && trackOf(file, folder) == track;
    if (track != 0) countBefore(track);
    Statement& row = track != 0 ? kept(_update, updateTrack) : kept(_insert, insertTrack);
    row.bind(folder).bind(file.name).bind(file.size).bind(file.mtime).bind(tags.title).bind(tags.sortTitle);
    row.bind(member.artist.id).bind(member.album.id).bind(member.albumArtist.id).bind(member.genre.id);
    row.bind(idOrNull(Membership::idOf(member.composer))).bind(idOrNull(Membership::idOf(member.podcast)));
    row.bind(Blob{member.titleKey}).bind(Blob{member.artist.key}).bind(Blob{member.albumArtist.key});
    row.bind(Blob{member.album.key}).bind(tags.mediaType).bind(std::int64_t{tags.isExplicit});
    row.bind(std::int64_t{album.isCompilation}).bind(std::int64_t{tags.trackNumber});
    row.bind(std::int64_t{tags.trackCount}).bind(std::int64_t{tags.discNumber}).bind(tags.duration);
    row.bind(tags.releaseDate ? SqlValue(secondsSince1970(*tags.releaseDate)) : SqlValue());
    row.bind(std::int64_t{tags.year}).bind(tags.picture);
    row.bind(AlbumGroups::claimOf(tags)).bind(TrackIdentity::of(tags));
    if (track != 0) {
        row.bind(track).run();
        if (!isKnownHere) _playlists.fillGaps(track, file.path());
        return ChapterTable::store(_database, track, tags.chapters, false);
    }
    row.bind(newPersistentID()).bind(now()).run();
    // Another program on the same file may have been quicker.
    if (_database.changes() == 0) return storeRow(file, tags, trackOf(file, folder), album);
    member.count(_counts, tags.mediaType);
    track = _database.lastInsertedRow();
    if (!_firstAdded) _firstAdded = track;
    _playlists.fillGaps(track, file.path());
    ChapterTable::store(_database, track, tags.chapters, true);
}

/** The album is decided anew when everything is stored. */
void TrackStore::noteGroup(std::int64_t track, bool isPresent) {
    const auto where = _albums.whereIs(track);
    if (!where || where->first.folded.empty()) return;
    auto& returned = _unsettled[where->first];
    if (isPresent) returned.insert(track);
}

void TrackStore::markPresent(std::int64_t track, std::int64_t folder, bool isPresent) {
    countBefore(track);
    kept(_mark,
         "UPDATE track SET present = ?, artist_key = (SELECT sort_key FROM collection WHERE id = artist_id),"
         "album_key = (SELECT sort_key FROM collection WHERE id = album_id),"
         "album_artist_key = (SELECT sort_key FROM collection WHERE id = album_artist_id) "
         "WHERE id = ? AND folder_id = ?")
        .bind(std::int64_t{isPresent})
        .bind(track)
        .bind(folder)
        .run();
    if (_database.changes() != 0) noteGroup(track, isPresent);
}

std::int64_t TrackStore::hideFolder(std::int64_t folder) {
    if (!_counts.isEmpty()) _counts.store(_database);
    _database.run({"UPDATE track SET present = 0 WHERE folder_id = ? AND present = 1", {folder}});
    const std::int64_t hidden = _database.changes();
    for (const AlbumGroups::Key& group : _albums.sharedWith(folder)) _unsettled[group];
    return hidden;
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

void TrackStore::notePlayed(std::int64_t persistentID) {
    _database.run({"UPDATE track SET play_count = play_count + 1, last_played = ? WHERE pid = ?",
                   {now(), persistentID}});
}

void TrackStore::setBookmark(std::int64_t persistentID, std::optional<double> time) {
    _database.run(
        {"UPDATE track SET bookmark = ? WHERE pid = ?", {time ? SqlValue(*time) : SqlValue(), persistentID}});
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
