#include "Host/Library/PlaylistStore.h"

#include "Host/Library/NewPersistentID.h"
#include "Host/Library/PlaylistText.h"
#include "Host/Library/TagText.h"

namespace helmo {

namespace {

SqlValue idOrNull(std::int64_t id) { return id == 0 ? SqlValue() : SqlValue(id); }

}  // namespace

KnownPlaylists PlaylistStore::known(Database& database) {
    KnownPlaylists playlists;
    auto rows = database.prepare(
        {"SELECT path, id, COALESCE(parent_id, 0), size, mtime, present, is_folder, names_others "
         "FROM playlist WHERE path IS NOT NULL",
         {}});
    while (rows.step())
        playlists[rows.text(0)] = {rows.integer(1),     rows.integer(2),      rows.integer(3),
                                   rows.integer(4),     rows.integer(5) != 0, rows.integer(6) != 0,
                                   rows.integer(7) != 0};
    return playlists;
}

std::string PlaylistStore::roots(Database& database) {
    auto row = database.prepare({"SELECT value FROM meta WHERE key = 'playlist folders'", {}});
    return row.step() ? row.text(0) : std::string();
}

void PlaylistStore::setRoots(const std::string& roots) {
    _database.run({"INSERT OR REPLACE INTO meta VALUES ('playlist folders', ?)", {roots}});
}

std::int64_t PlaylistStore::rowOf(const std::filesystem::path& path) {
    return _database.integer({"SELECT id FROM playlist WHERE path = ?", {path.native()}});
}

void PlaylistStore::store(const Place& place, const PlaylistFile& list) {
    _database.run(
        {"INSERT INTO playlist (pid, name, sort_key, parent_id, is_hidden, is_deletable, path, size, mtime, "
         "names_others) VALUES (?, ?, ?, ?, ?, 0, ?, ?, ?, ?) ON CONFLICT (path) DO UPDATE SET "
         "name = excluded.name, sort_key = excluded.sort_key, parent_id = excluded.parent_id, "
         "is_hidden = excluded.is_hidden, is_folder = 0, size = excluded.size, mtime = excluded.mtime, "
         "names_others = excluded.names_others, present = 1",
         {newPersistentID(), list.name, Blob{_sortKey.make(list.name)}, idOrNull(place.parent),
          std::int64_t{place.isHidden}, place.file.native(), place.size, place.mtime,
          std::int64_t{list.namesOthers}}});
    const auto playlist = rowOf(place.file);
    clear(playlist);
    storeEntries(playlist, list.entries);
}

void PlaylistStore::clear(std::int64_t playlist) {
    _database.run({"DELETE FROM playlist_item WHERE playlist_id = ?", {playlist}});
    _database.run({"DELETE FROM playlist_gap WHERE playlist_id = ?", {playlist}});
    _hasGaps.reset();
}

void PlaylistStore::storeEntries(std::int64_t playlist, const std::vector<std::string>& entries) {
    auto track = _database.prepare({"SELECT id FROM track WHERE folder_id = ? AND file_name = ?", {}});
    auto item = _database.prepare({"INSERT INTO playlist_item VALUES (?, ?, ?)", {}});
    auto gap = _database.prepare({"INSERT INTO playlist_gap VALUES (?, ?, ?)", {}});
    // Entries mostly follow others of their folder.
    std::string folder;
    std::int64_t folderId = 0, position = 0;
    for (const std::string& entry : entries) {
        const auto slash = entry.rfind('/');
        if (entry.compare(0, slash, folder) != 0) {
            folder = entry.substr(0, slash);
            folderId = _database.integer({"SELECT id FROM folder WHERE path = ?", {folder}});
        }
        track.reset();
        track.bind(folderId).bind(entry.substr(slash + 1));
        const bool isKnown = track.step();
        Statement& row = isKnown ? item : gap;
        row.reset();
        row.bind(playlist).bind(position++);
        (isKnown ? row.bind(track.integer(0)) : row.bind(entry)).run();
    }
}

std::int64_t PlaylistStore::storeFolder(const std::filesystem::path& directory, std::int64_t parent) {
    const std::string name = cleanTagText(asUtf8(directory.filename().native()));
    _database.run(
        {"INSERT INTO playlist (pid, name, sort_key, parent_id, is_folder, is_deletable, path) "
         "VALUES (?, ?, ?, ?, 1, 0, ?) ON CONFLICT (path) DO UPDATE SET name = excluded.name, "
         "sort_key = excluded.sort_key, parent_id = excluded.parent_id, is_folder = 1, is_hidden = 0, "
         "present = 1",
         {newPersistentID(), name, Blob{_sortKey.make(name)}, idOrNull(parent), directory.native()}});
    const auto row = rowOf(directory);
    clear(row);
    return row;
}

void PlaylistStore::move(std::int64_t playlist, const std::filesystem::path& path) {
    _database.run({"UPDATE OR IGNORE playlist SET path = ? WHERE id = ?", {path.native(), playlist}});
}

void PlaylistStore::setParent(std::int64_t playlist, std::int64_t parent) {
    _database.run({"UPDATE playlist SET parent_id = ? WHERE id = ?", {idOrNull(parent), playlist}});
}

void PlaylistStore::hide(std::int64_t playlist) {
    _database.run({"UPDATE playlist SET present = 0 WHERE id = ?", {playlist}});
}

void PlaylistStore::remove(std::int64_t persistentID) {
    _database.run({"DELETE FROM playlist WHERE pid = ? AND is_deletable = 1", {persistentID}});
}

void PlaylistStore::fillGaps(std::int64_t track, const std::filesystem::path& file) {
    if (!_hasGaps) _hasGaps = _database.integer({"SELECT EXISTS (SELECT 1 FROM playlist_gap)", {}}) != 0;
    if (!*_hasGaps) return;
    _database.run(
        {"INSERT OR IGNORE INTO playlist_item SELECT playlist_id, position, ? FROM playlist_gap "
         "WHERE path = ?",
         {track, file.native()}});
    if (_database.changes() > 0) _database.run({"DELETE FROM playlist_gap WHERE path = ?", {file.native()}});
}

}  // namespace helmo
