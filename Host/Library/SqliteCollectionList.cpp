#include "Host/Library/SqliteCollectionList.h"

#include <algorithm>

#include "Host/Library/PlaylistColumns.h"
#include "Host/Library/SqliteCollection.h"
#include "Platform/Foundation/IndexPath.h"
#include "Platform/Media/MediaPlaylist.h"

namespace helmo {

using zornic::Dictionary;
using zornic::MediaGrouping;
namespace Property = zornic::MediaCollectionProperty;

namespace {

/** Under which properties a collection's own name and ID are known. */
struct NameProperties {
    const char* name = nullptr;
    const char* persistentID = nullptr;
};

NameProperties namePropertiesOf(MediaGrouping grouping) {
    switch (grouping) {
        case MediaGrouping::Album:
        case MediaGrouping::AlbumsOfArtist:
        case MediaGrouping::PodcastTitle:
            return {Property::AlbumTitle, Property::AlbumPersistentID};
        case MediaGrouping::Artist:
            return {Property::ArtistName, Property::ArtistPersistentID};
        case MediaGrouping::AlbumArtist:
            return {Property::AlbumArtistName, Property::AlbumArtistPersistentID};
        case MediaGrouping::Composer:
            return {Property::ComposerName, Property::ComposerPersistentID};
        case MediaGrouping::Genre:
            return {Property::GenreName, Property::GenrePersistentID};
        default:
            return {};
    }
}

}  // namespace

PagedEntityList::Entities SqliteCollectionList::entitiesOfRows(const RowList::Rows& rows) const {
    const auto byRow = _readers->read(EntitiesByRow(), [&](Database& database) {
        if (_compiler->isOfPlaylists()) return playlists(database, rows);
        return _compiler->isOfItems() ? singleItems(database, rows) : collections(database, rows);
    });
    Entities entities;
    for (const std::uint32_t row : rows) {
        const auto found = byRow.find(row);
        entities.push_back(found == byRow.end() ? nullptr : found->second);
    }
    return entities;
}

SqliteCollectionList::EntitiesByRow SqliteCollectionList::collections(Database& database,
                                                                      const RowList::Rows& rows) const {
    const auto& wanted = _compiler->description().collectionPropertiesToFetch;
    const auto wants = [&](const char* property) {
        return std::ranges::find(wanted, property) != wanted.end();
    };
    auto statement = database.prepare(
        _compiler->collectionValues(pageLength, wants(Property::AlbumCount), wants(Property::ArtistCount)));
    bindPage(statement, rows);
    EntitiesByRow entities;
    std::vector<std::int64_t> representatives;
    while (statement.step()) {
        const std::int64_t row = statement.integer(0);
        if (!statement.isNull(6)) representatives.push_back(statement.integer(6));
        entities[row] =
            zornic::make<SqliteCollection>(_library, static_cast<zornic::PersistentID>(statement.integer(1)),
                                           collectionValues(statement), _compiler, _readers, row);
    }
    _representatives->expect(std::move(representatives), _generation);
    return entities;
}

Dictionary SqliteCollectionList::collectionValues(const Statement& row) const {
    Dictionary values;
    const auto setText = [&](const char* property, int column) {
        if (auto text = row.text(column); !text.empty()) values[property] = std::move(text);
    };
    const auto setID = [&](const char* property, int column) {
        if (!row.isNull(column)) values[property] = static_cast<std::uint64_t>(row.integer(column));
    };
    const auto names = namePropertiesOf(_compiler->description().grouping);
    setText(Property::AlbumArtist, 3);
    setText(Property::AlbumArtistName, 3);
    setID(Property::AlbumArtistPersistentID, 4);
    setText(names.name, 2);
    setID(names.persistentID, 1);
    values[Property::ItemCount] = row.integer(5);
    setID(Property::RepresentativeItemPersistentID, 6);
    if (!row.isNull(7)) values[Property::AlbumCount] = row.integer(7);
    if (!row.isNull(8)) values[Property::ArtistCount] = row.integer(8);
    return values;
}

SqliteCollectionList::EntitiesByRow SqliteCollectionList::playlists(Database& database,
                                                                    const RowList::Rows& rows) const {
    static const std::string sql = "SELECT " + PlaylistColumns::columns() +
                                   " FROM playlist p WHERE p.present = 1 AND p.id IN " + marksOfPage();
    auto statement = database.prepare({sql, {}});
    bindPage(statement, rows);
    EntitiesByRow entities;
    while (statement.step()) {
        auto values = PlaylistColumns::values(statement);
        const auto id = zornic::valueForKey(values, zornic::MediaPlaylistProperty::PersistentID).asUnsigned();
        entities[statement.integer(0)] =
            zornic::make<zornic::MediaPlaylist>(id, _library.lock(), std::move(values));
    }
    return entities;
}

SqliteCollectionList::EntitiesByRow SqliteCollectionList::singleItems(Database& database,
                                                                      const RowList::Rows& rows) const {
    static const std::string sql =
        "SELECT t.id, t.pid FROM track t WHERE t.present = 1 AND t.id IN " + marksOfPage();
    auto statement = database.prepare({sql, {}});
    bindPage(statement, rows);
    EntitiesByRow entities;
    while (statement.step()) {
        const auto id = static_cast<zornic::PersistentID>(statement.integer(1));
        Dictionary values{{Property::ItemCount, 1}, {Property::RepresentativeItemPersistentID, id}};
        entities[statement.integer(0)] = zornic::make<zornic::MediaItemCollection>(
            _library, id, std::move(values), _compiler->itemsOf(id));
    }
    return entities;
}

std::uint64_t SqliteCollectionList::indexOfEntity(const zornic::MediaEntity& entity) const {
    const auto* collection = dynamic_cast<const zornic::MediaItemCollection*>(&entity);
    if (!collection || collection->library() != _library.lock()) return zornic::NotFound;
    const std::string table = _compiler->isOfPlaylists() ? "playlist"
                              : _compiler->isOfItems()   ? "track"
                                                         : "collection";
    const auto row = _readers->read(std::int64_t{0}, [&](Database& database) {
        return database.integer({"SELECT id FROM " + table + " WHERE pid = ?",
                                 {static_cast<std::int64_t>(collection->persistentID())}});
    });
    return row == 0 ? zornic::NotFound : indexOf(entity, static_cast<std::uint32_t>(row));
}

}  // namespace helmo
