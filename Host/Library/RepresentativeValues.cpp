#include "Host/Library/RepresentativeValues.h"

#include <algorithm>

#include "Host/Library/ItemColumns.h"
#include "Host/Library/PagedEntityList.h"

namespace helmo {

using zornic::Dictionary;
using zornic::PersistentID;

void RepresentativeValues::expect(Page items, std::uint64_t generation) {
    std::lock_guard lock(_mutex);
    if (_generation != generation) _expected.clear();
    _generation = generation;
    _expected.push_front(std::move(items));
    if (_expected.size() > pagesExpected) _expected.pop_back();
}

Dictionary RepresentativeValues::values(PersistentID item, std::uint64_t generation, Readers& readers) {
    const auto known = [&] {
        const auto found = _items.get(item);
        return found && found->generation == generation ? found->values : Dictionary();
    };
    if (auto values = known(); !values.empty()) return values;
    const Page page = takePage(item, generation);
    if (page.empty()) return {};
    read(page, generation, readers);
    return known();
}

RepresentativeValues::Page RepresentativeValues::takePage(PersistentID item, std::uint64_t generation) {
    std::lock_guard lock(_mutex);
    if (_generation != generation) return {};
    const auto found = std::ranges::find_if(_expected, [&](const Page& page) {
        return std::ranges::find(page, static_cast<std::int64_t>(item)) != page.end();
    });
    if (found == _expected.end()) return {};
    Page page = std::move(*found);
    _expected.erase(found);
    return page;
}

void RepresentativeValues::read(const Page& page, std::uint64_t generation, Readers& readers) {
    static const std::string sql = "SELECT " + ItemColumns::rowColumns() + " FROM " +
                                   ItemColumns::rowTables() + " WHERE t.present = 1 AND t.pid IN " +
                                   marksOfPage();
    readers.read(false, [&](Database& database) {
        auto statement = database.prepare({sql, {}});
        for (std::size_t at = 0; at < PagedEntityList::pageLength; ++at)
            statement.bind(at < page.size() ? SqlValue(page[at]) : SqlValue());
        while (statement.step()) {
            auto values = ItemColumns::rowValues(statement);
            const auto item =
                zornic::valueForKey(values, zornic::MediaItemProperty::PersistentID).asUnsigned();
            _items.set(item, {generation, std::move(values)});
        }
        return true;
    });
}

}  // namespace helmo
