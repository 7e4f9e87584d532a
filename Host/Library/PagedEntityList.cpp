#include "Host/Library/PagedEntityList.h"

#include <algorithm>

#include "Platform/Foundation/IndexPath.h"

namespace helmo {

namespace {

/** The rows that a display shows at once, about. */
constexpr std::uint64_t screenLength = 12;

}  // namespace

const PagedEntityList::Page* PagedEntityList::keptPage(std::uint64_t index) const {
    const auto page =
        std::ranges::find_if(_pages, [&](const Page& kept) { return kept.range.contains(index); });
    if (page == _pages.end()) return nullptr;
    _pages.splice(_pages.begin(), _pages, page);
    return &_pages.front();
}

zornic::Range PagedEntityList::rangeToRead(std::uint64_t index) const {
    if (index > 0 && keptPage(index - 1)) return {index, std::min(pageLength, count() - index)};
    if (!keptPage(index + 1)) return {index, std::min(screenLength, count() - index)};
    const auto first = index + 1 - std::min(pageLength, index + 1);
    return {first, index + 1 - first};
}

std::shared_ptr<zornic::MediaEntity> PagedEntityList::entityAtIndex(std::uint64_t index) const {
    if (index >= count()) return nullptr;
    zornic::Range range;
    {
        std::lock_guard lock(_mutex);
        if (const Page* page = keptPage(index)) return page->entities[index - page->range.location];
        range = rangeToRead(index);
    }
    const auto numbers = _rows->rows(range);
    Page page{range, numbers.empty() ? Entities() : entitiesOfRows(numbers)};
    page.entities.resize(range.length);
    const auto entity = page.entities[index - range.location];
    std::lock_guard lock(_mutex);
    _pages.push_front(std::move(page));
    if (_pages.size() > maximumPages) _pages.pop_back();
    return entity;
}

std::uint64_t PagedEntityList::indexOf(const zornic::MediaEntity& entity, std::uint32_t row) const {
    const auto isIt = [&](const auto& other) { return other && other->isEqual(entity); };
    const auto index = _rows->indexOf(row);
    if (index != zornic::NotFound && isIt(entityAtIndex(index))) return index;
    // Rows that came or went may have moved it since it was shown.
    std::lock_guard lock(_mutex);
    for (const Page& page : _pages)
        if (const auto found = std::ranges::find_if(page.entities, isIt); found != page.entities.end())
            return page.range.location + static_cast<std::uint64_t>(found - page.entities.begin());
    return zornic::NotFound;
}

std::string marksOfPage() {
    std::string marks = "(?";
    for (std::uint64_t at = 1; at < PagedEntityList::pageLength; ++at) marks += ", ?";
    return marks + ")";
}

void bindPage(Statement& statement, const RowList::Rows& rows) {
    for (std::uint64_t at = 0; at < PagedEntityList::pageLength; ++at)
        statement.bind(at < rows.size() ? SqlValue(std::int64_t{rows[at]}) : SqlValue());
}

}  // namespace helmo
