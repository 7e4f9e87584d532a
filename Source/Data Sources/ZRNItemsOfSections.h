#pragma once

#include <mutex>
#include <vector>

#include "Platform/Foundation/Range.h"
#include "Platform/Media/MediaEntity.h"

namespace zornic {

/** The items of several collections, one collection after the other, as one list: a collection is asked for
   its items when one of them is. Any thread. */
class ZRNItemsOfSections final : public MediaEntityList {
public:
    /** `ranges`: where in the whole list the items of each of the `sections` stand. */
    ZRNItemsOfSections(std::shared_ptr<const MediaEntityList> sections, std::vector<Range> ranges);

    std::uint64_t count() const override { return _ranges.empty() ? 0 : _ranges.back().end(); }
    std::shared_ptr<MediaEntity> entityAtIndex(std::uint64_t index) const override;
    /** Looks in the album of an item alone. */
    std::uint64_t indexOfEntity(const MediaEntity& entity) const override;

private:
    /** None when the collection has gone. */
    std::shared_ptr<const MediaEntityList> itemsOfSection(std::size_t section) const;

    const std::shared_ptr<const MediaEntityList> _sections;
    const std::vector<Range> _ranges;
    mutable std::mutex _mutex;
    mutable std::vector<std::shared_ptr<const MediaEntityList>> _items;
};

}  // namespace zornic
