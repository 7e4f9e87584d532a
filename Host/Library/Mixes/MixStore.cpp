#include "Host/Library/Mixes/MixStore.h"

#include <algorithm>
#include <sstream>

#include "Host/Library/Mixes/MixSource.h"
#include "Host/Library/NewPersistentID.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

namespace {

using zornic::MediaGrouping;

constexpr auto albums = static_cast<std::int64_t>(MediaGrouping::Album);
constexpr auto genres = static_cast<std::int64_t>(MediaGrouping::Genre);

/** Mixes that are there and aren't as wanted. */
constexpr const char* areOtherwise =
    "p.is_brivo_mix = 1 AND p.present <> ?1 AND EXISTS (SELECT 1 FROM playlist_item i WHERE i.playlist_id = "
    "p.id)";

}  // namespace

std::int64_t MixStore::playlistOf(const Mix& mix) {
    const auto known = _database.integer({"SELECT playlist_id FROM mix WHERE subject = ?", {mix.subject}});
    if (known != 0) return known;
    _database.run(
        {"INSERT INTO playlist (pid, name, sort_key, is_brivo_mix, is_deletable) VALUES (?, '', x'', 1, 0)",
         {newPersistentID()}});
    const auto playlist = _database.lastInsertedRow();
    _database.run({"INSERT INTO mix (playlist_id, subject) VALUES (?, ?)", {playlist, mix.subject}});
    return playlist;
}

void MixStore::store(const Mix& mix) {
    const auto playlist = playlistOf(mix);
    _database.run({"UPDATE playlist SET name = ?, sort_key = ?, present = 1 WHERE id = ?",
                   {mix.name, Blob{_sortKey.make(mix.name)}, playlist}});
    _database.run({"DELETE FROM playlist_item WHERE playlist_id = ?", {playlist}});
    _database.run({"DELETE FROM mix_artist WHERE playlist_id = ?", {playlist}});
    std::int64_t position = 0;
    for (const std::int64_t song : mix.songs)
        _database.run({"INSERT INTO playlist_item VALUES (?, ?, ?)", {playlist, position++, song}});
    position = 0;
    for (const std::int64_t artist : mix.artists)
        _database.run({"INSERT INTO mix_artist VALUES (?, ?, ?)", {playlist, position++, artist}});
}

void MixStore::keepOnly(const std::vector<Mix>& mixes) {
    std::vector<std::int64_t> others;
    auto rows = _database.prepare({"SELECT playlist_id, subject FROM mix", {}});
    while (rows.step())
        if (std::ranges::find(mixes, rows.text(1), &Mix::subject) == mixes.end())
            others.push_back(rows.integer(0));
    for (const std::int64_t playlist : others) {
        _database.run({"DELETE FROM playlist_item WHERE playlist_id = ?", {playlist}});
        _database.run({"UPDATE playlist SET present = 0 WHERE id = ?", {playlist}});
    }
}

void MixStore::setShown(bool areShown) {
    _database.run({std::string("UPDATE playlist AS p SET present = ?1 WHERE ") + areOtherwise,
                   {std::int64_t{areShown}}});
}

bool MixStore::needsShown(Database& database, bool areShown) {
    return database.integer(
               {std::string("SELECT EXISTS (SELECT 1 FROM playlist p WHERE ") + areOtherwise + ")",
                {std::int64_t{areShown}}}) != 0;
}

void MixStore::noteMade(const MixesMade& made) {
    std::ostringstream text;
    text << made.songs << ' ' << made.lastTrack << ' ' << made.lastCollection << '\n' << made.texts;
    _database.run({"INSERT OR REPLACE INTO meta VALUES ('mixes', ?)", {text.str()}});
}

std::optional<MixesMade> MixStore::made(Database& database) {
    auto row = database.prepare({"SELECT value FROM meta WHERE key = 'mixes'", {}});
    if (!row.step()) return std::nullopt;
    std::istringstream text(row.text(0));
    MixesMade made;
    if (!(text >> made.songs >> made.lastTrack >> made.lastCollection) || text.get() != '\n')
        return std::nullopt;
    made.texts.assign(std::istreambuf_iterator<char>(text), {});
    return made;
}

MixesMade MixStore::current(Database& database) {
    // Every song has one genre, be it the one without a name, and genres are few.
    const auto songs =
        database.integer({"SELECT SUM(n.tracks) FROM collection c JOIN collection_count n "
                          "ON n.collection_id = c.id WHERE c.kind = ? AND (n.media_type & 1) <> 0",
                          {genres}});
    return {songs,
            database.integer({"SELECT MAX(id) FROM track", {}}),
            database.integer({"SELECT MAX(id) FROM collection", {}}),
            {}};
}

std::int64_t MixStore::songsAddedSince(Database& database, const MixesMade& made, std::int64_t enough) {
    return database.integer({std::string("SELECT COUNT(*) FROM (SELECT 1 FROM track t NOT INDEXED WHERE "
                                         "t.id > ? AND ") +
                                 isMixMusic + " LIMIT ?)",
                             {made.lastTrack, enough}});
}

std::int64_t MixStore::albumsAddedSince(Database& database, const MixesMade& made) {
    return database.integer({"SELECT COUNT(*) FROM collection NOT INDEXED WHERE id > ? AND kind = ?",
                             {made.lastCollection, albums}});
}

bool MixStore::isAnyTooShort(Database& database) {
    return database.integer(
               {"SELECT EXISTS (SELECT 1 FROM playlist p JOIN playlist_item i ON i.playlist_id = "
                "p.id JOIN track t ON t.id = i.track_id WHERE p.is_brivo_mix = 1 AND p.present = 1 "
                "GROUP BY p.id HAVING SUM(t.present) < ?)",
                {static_cast<std::int64_t>(fewestMixSongs)}}) != 0;
}

std::vector<std::string> MixStore::representativeArtists(Database& database, std::int64_t persistentID) {
    std::vector<std::string> names;
    auto rows =
        database.prepare({"SELECT c.name FROM playlist p JOIN mix_artist a ON a.playlist_id = p.id "
                          "JOIN collection c ON c.id = a.artist_id WHERE p.pid = ? ORDER BY a.position",
                          {persistentID}});
    while (rows.step()) names.push_back(rows.text(0));
    return names;
}

std::int64_t MixStore::activePlaylist(Database& database) {
    return database.integer(
        {"SELECT pid FROM playlist WHERE is_active_brivo = 1 AND present = 1 LIMIT 1", {}});
}

}  // namespace helmo
