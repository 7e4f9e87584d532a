#include "Host/Library/SqliteItemList.h"

#include <unordered_map>

#include "Host/Library/ItemColumns.h"
#include "Platform/Foundation/IndexPath.h"
#include "Platform/Media/MediaItem.h"

namespace helmo {

namespace {

std::string pageSql() {
    std::string sql = "SELECT " + ItemColumns::columns() + " FROM " + ItemColumns::tables() +
                      " WHERE t.present = 1 AND t.id IN (?";
    for (std::uint64_t at = 1; at < PagedEntityList::pageLength; ++at) sql += ", ?";
    return sql + ")";
}

}  // namespace

PagedEntityList::Entities SqliteItemList::entitiesOfRows(const std::vector<std::uint32_t>& rows) const {
    static const std::string sql = pageSql();
    const auto read =
        _readers->read(std::unordered_map<std::int64_t, zornic::Dictionary>(), [&](Database& database) {
            std::unordered_map<std::int64_t, zornic::Dictionary> values;
            auto statement = database.prepare({sql, {}});
            bindPage(statement, rows);
            while (statement.step()) values.emplace(statement.integer(0), ItemColumns::values(statement));
            return values;
        });
    Entities entities;
    for (const std::uint32_t row : rows) {
        const auto found = read.find(row);
        if (found == read.end()) {
            entities.push_back(nullptr);
            continue;
        }
        const auto id =
            zornic::valueForKey(found->second, zornic::MediaItemProperty::PersistentID).asUnsigned();
        entities.push_back(zornic::make<zornic::MediaItem>(_library, id, found->second));
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
    return row == 0 ? zornic::NotFound : rows().indexOf(static_cast<std::uint32_t>(row));
}

}  // namespace helmo
