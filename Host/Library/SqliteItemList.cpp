#include "Host/Library/SqliteItemList.h"

#include <unordered_map>

#include "Host/Library/ItemColumns.h"
#include "Platform/Foundation/IndexPath.h"
#include "Platform/Media/MediaItem.h"

namespace helmo {

namespace {

std::string pageSql() {
    return "SELECT " + ItemColumns::rowColumns() + " FROM " + ItemColumns::rowTables() +
           " WHERE t.present = 1 AND t.id IN " + marksOfPage();
}

}  // namespace

PagedEntityList::Entities SqliteItemList::entitiesOfRows(const RowList::Rows& rows) const {
    static const std::string sql = pageSql();
    using Items = std::unordered_map<std::int64_t, std::shared_ptr<zornic::MediaItem>>;
    const auto read = _readers->read(Items(), [&](Database& database) {
        Items items;
        auto statement = database.prepare({sql, {}});
        bindPage(statement, rows);
        while (statement.step()) {
            auto values = ItemColumns::rowValues(statement);
            const auto id = zornic::valueForKey(values, zornic::MediaItemProperty::PersistentID).asUnsigned();
            items[statement.integer(0)] = zornic::make<zornic::MediaItem>(_library, id, std::move(values));
        }
        return items;
    });
    Entities entities;
    for (const std::uint32_t row : rows) {
        const auto found = read.find(row);
        entities.push_back(found == read.end() ? nullptr : found->second);
    }
    return entities;
}

std::uint64_t SqliteItemList::indexOfEntity(const zornic::MediaEntity& entity) const {
    const auto* item = dynamic_cast<const zornic::MediaItem*>(&entity);
    if (!item || item->library() != _library.lock()) return zornic::NotFound;
    const auto row = _readers->read(std::int64_t{0}, [&](Database& database) {
        return database.integer(
            {"SELECT id FROM track WHERE pid = ?", {static_cast<std::int64_t>(item->persistentID())}});
    });
    return row == 0 ? zornic::NotFound : indexOf(entity, static_cast<std::uint32_t>(row));
}

}  // namespace helmo
