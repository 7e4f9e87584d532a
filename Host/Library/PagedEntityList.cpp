#include "Host/Library/PagedEntityList.h"

namespace helmo {

std::shared_ptr<zornic::MediaEntity> PagedEntityList::entityAtIndex(std::uint64_t index) const {
    if (index >= count()) return nullptr;
    const std::uint64_t page = index / pageLength;
    auto entities = _pages.get(page).value_or(nullptr);
    if (!entities) {
        const auto numbers = _rows->rows({page * pageLength, pageLength});
        entities = std::make_shared<const Entities>(numbers.empty() ? Entities() : entitiesOfRows(numbers));
        _pages.set(page, entities);
    }
    const std::uint64_t within = index % pageLength;
    return within < entities->size() ? (*entities)[within] : nullptr;
}

void bindPage(Statement& statement, const std::vector<std::uint32_t>& rows) {
    for (std::uint64_t at = 0; at < PagedEntityList::pageLength; ++at)
        statement.bind(at < rows.size() ? SqlValue(std::int64_t{rows[at]}) : SqlValue());
}

}  // namespace helmo
