#include "Data Sources/ZRNItemsOfSections.h"

#include <algorithm>

#include "Platform/Foundation/IndexPath.h"
#include "Platform/Media/MediaItemCollection.h"

namespace zornic {

ZRNItemsOfSections::ZRNItemsOfSections(std::shared_ptr<const MediaEntityList> sections,
                                       std::vector<Range> ranges)
    : _sections(std::move(sections)), _ranges(std::move(ranges)), _items(_ranges.size()) {}

std::shared_ptr<MediaEntity> ZRNItemsOfSections::entityAtIndex(std::uint64_t index) const {
    // The first that ends beyond it: sections of no items end where they begin.
    const auto found = std::ranges::upper_bound(_ranges, index, {}, &Range::end);
    if (found == _ranges.end()) return nullptr;
    const auto items = itemsOfSection(static_cast<std::size_t>(found - _ranges.begin()));
    return items ? items->entityAtIndex(index - found->location) : nullptr;
}

std::uint64_t ZRNItemsOfSections::indexOfEntity(const MediaEntity& entity) const {
    const Value album = entity.valueForProperty(MediaItemProperty::AlbumPersistentID);
    for (std::size_t section = 0; section < _ranges.size(); ++section) {
        const auto collection = _sections->entityAtIndex(section);
        if (!collection || Value(collection->persistentID()) != album) continue;
        const auto items = itemsOfSection(section);
        const auto index = items ? items->indexOfEntity(entity) : NotFound;
        if (index < _ranges[section].length) return _ranges[section].location + index;
    }
    return NotFound;
}

std::shared_ptr<const MediaEntityList> ZRNItemsOfSections::itemsOfSection(std::size_t section) const {
    {
        std::lock_guard lock(_mutex);
        if (_items[section]) return _items[section];
    }
    const auto collection = std::dynamic_pointer_cast<MediaItemCollection>(_sections->entityAtIndex(section));
    if (!collection) return nullptr;
    auto items = collection->items();
    std::lock_guard lock(_mutex);
    if (!_items[section]) _items[section] = std::move(items);
    return _items[section];
}

}  // namespace zornic
