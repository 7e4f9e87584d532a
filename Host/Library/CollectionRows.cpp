#include "Host/Library/CollectionRows.h"

#include "Host/Library/NewPersistentID.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

namespace {

using zornic::MediaGrouping;

constexpr auto albumKind = static_cast<std::int64_t>(MediaGrouping::Album);
constexpr auto artistKind = static_cast<std::int64_t>(MediaGrouping::Artist);
constexpr auto albumArtistKind = static_cast<std::int64_t>(MediaGrouping::AlbumArtist);

/** What an album is found by. No title has a line break in it. */
std::string foldedAlbum(const CollectionRows::Album& album) {
    std::string folded = SortKey::folded(album.title);
    if (album.place != 0) folded.append(1, '\n').append(std::to_string(album.place));
    return folded;
}

}  // namespace

const std::string& CollectionRows::keyOf(std::string& key, std::int64_t kind, const std::string& name,
                                         const std::string& sortName, std::int64_t owner,
                                         std::int64_t place) {
    key.assign(1, static_cast<char>(kind));
    key.append(reinterpret_cast<const char*>(&owner), sizeof owner);
    key.append(reinterpret_cast<const char*>(&place), sizeof place);
    return key.append(sortName).append(1, '\n').append(name);
}

const CollectionRows::Row& CollectionRows::row(std::int64_t kind, const std::string& name,
                                               const std::string& sortName) {
    keyOf(_key, kind, name, sortName, 0, 0);
    if (const auto cached = _cache.collections.find(_key); cached != _cache.collections.end())
        return cached->second;
    const std::string folded = SortKey::folded(name);
    auto found = find(kind, folded, 0, name, sortName);
    if (!found) found = insert(kind, folded, {}, name, sortName);
    return _cache.collections.emplace(_key, std::move(*found)).first->second;
}

CollectionRows::Row CollectionRows::album(const Album& album) {
    auto known = knownAlbum(album);
    return known ? *std::move(known) : addAlbum(album);
}

CollectionRows::Row CollectionRows::addAlbum(const Album& album) {
    const Row row = insert(albumKind, foldedAlbum(album), album.owner, album.title, album.sortTitle);
    keyOf(_key, albumKind, album.title, album.sortTitle, album.owner.id, album.place);
    _cache.collections.insert_or_assign(_key, row);
    return row;
}

std::optional<CollectionRows::Row> CollectionRows::knownAlbum(const Album& album) {
    keyOf(_key, albumKind, album.title, album.sortTitle, album.owner.id, album.place);
    if (const auto cached = _cache.collections.find(_key); cached != _cache.collections.end())
        return cached->second;
    auto found = find(albumKind, foldedAlbum(album), album.owner.id, album.title, album.sortTitle);
    if (found) _cache.collections.emplace(_key, *found);
    return found;
}

CollectionRows::Row CollectionRows::takeOver(std::int64_t row, const Album& album) {
    std::erase_if(_cache.collections, [&](const auto& known) { return known.second.id == row; });
    auto old = _database.prepare({"SELECT name, sort_name FROM collection WHERE id = ?", {row}});
    std::string sortName = album.sortTitle;
    if (old.step() && sortName.empty() && SortKey::folded(old.text(0)) == SortKey::folded(album.title))
        sortName = old.text(1);
    const std::string key = _sortKey.make(album.title, sortName);
    _database.run(
        {"UPDATE collection SET name = ?, sort_name = ?, folded = ?, owner_id = ?, sort_key = ?, "
         "owner_key = ? WHERE id = ?",
         {album.title, sortName, foldedAlbum(album), album.owner.id, Blob{key}, Blob{album.owner.key}, row}});
    return {row, key};
}

std::optional<CollectionRows::Row> CollectionRows::find(std::int64_t kind, const std::string& folded,
                                                        std::int64_t owner, const std::string& name,
                                                        const std::string& sortName) {
    auto found = _database.prepare(
        {"SELECT id, sort_key, sort_name FROM collection WHERE kind = ? AND folded = ? AND owner_id = ?",
         {kind, folded, owner}});
    if (!found.step()) return std::nullopt;
    Row known{found.integer(0), found.text(1)};
    if (!sortName.empty() && found.text(2).empty()) {
        known.key = _sortKey.make(name, sortName);
        sortAgain(kind, known.id, sortName, known.key);
    }
    _database.run({"UPDATE collection SET name = ?1 WHERE id = ?2 AND name <> ?1", {name, known.id}});
    return known;
}

CollectionRows::Row CollectionRows::insert(std::int64_t kind, const std::string& folded, const Row& owner,
                                           const std::string& name, const std::string& sortName) {
    const std::string key = _sortKey.make(name, sortName);
    _database.run(
        {"INSERT INTO collection (pid, kind, name, sort_name, folded, owner_id, sort_key, owner_key) "
         "VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
         {newPersistentID(), kind, name, sortName, folded, owner.id, Blob{key}, Blob{owner.key}}});
    return {_database.lastInsertedRow(), key};
}

void CollectionRows::sortAgain(std::int64_t kind, std::int64_t id, const std::string& sortName,
                               const std::string& key) {
    if (!_counts.isEmpty()) _counts.store(_database);
    for (auto& [name, known] : _cache.collections)
        if (known.id == id) known.key = key;
    _database.run(
        {"UPDATE collection SET sort_name = ?, sort_key = ? WHERE id = ?", {sortName, Blob{key}, id}});
    const auto update = [&](const std::string& sql) { _database.run({sql, {Blob{key}, id}}); };
    // Only what is there stands in an index; the others get their keys when they come back.
    if (kind == artistKind) update("UPDATE track SET artist_key = ? WHERE artist_id = ? AND present = 1");
    if (kind == albumKind) update("UPDATE track SET album_key = ? WHERE album_id = ? AND present = 1");
    if (kind == albumArtistKind)
        update("UPDATE track SET album_artist_key = ? WHERE album_artist_id = ? AND present = 1");
    if (kind == albumArtistKind) update("UPDATE collection SET owner_key = ? WHERE owner_id = ?");
}

}  // namespace helmo
