#include "Platform/Media/AVQueueFeeder.h"

#include <utility>

#include "Platform/Media/ShufflePermutation.h"

namespace zornic {

MediaQueryQueueFeeder::MediaQueryQueueFeeder(std::shared_ptr<MediaQuery> query,
                                             std::optional<std::uint64_t> startIndex,
                                             std::int64_t shuffleType, std::uint64_t seed)
    : _query(std::move(query)),
      _items(_query ? _query->items() : std::make_shared<MediaEntityArray>()),
      _shuffleType(shuffleType),
      _seed(seed) {
    if (!startIndex || *startIndex >= count()) return;
    if (_shuffleType != 0)
        _firstIndex = *startIndex;
    else
        _startPosition = *startIndex;
}

std::uint64_t MediaQueryQueueFeeder::count() const { return _items->count(); }

std::shared_ptr<AVItem> MediaQueryQueueFeeder::itemAtPosition(std::uint64_t position) {
    if (position >= count()) return nullptr;
    const auto mediaItem =
        std::dynamic_pointer_cast<MediaItem>(_items->entityAtIndex(indexForPosition(position)));
    if (!mediaItem) return nullptr;
    const auto item = make<AVLibraryItem>(mediaItem, position, count());
    item->setFeeder(strong<AVQueueFeeder>(this));
    return item;
}

std::uint64_t MediaQueryQueueFeeder::setShuffleType(std::int64_t type, std::uint64_t current) {
    const bool hasCurrent = current < count();
    const auto index = hasCurrent ? indexForPosition(current) : NotFound;
    _shuffleType = type;
    if (type == 0) {
        _firstIndex = NotFound;
        return _startPosition = hasCurrent ? index : 0;
    }
    // Another order each time that shuffle is switched on, as a driver expects who didn't like the first.
    _seed = _seed * 6364136223846793005U + 1442695040888963407U;
    _firstIndex = index;
    return _startPosition = 0;
}

std::uint64_t MediaQueryQueueFeeder::positionOfMediaItem(const MediaItem& item) const {
    const auto index = _items->indexOfEntity(item);
    return index >= count() ? NotFound : positionForIndex(index);
}

std::uint64_t MediaQueryQueueFeeder::indexForPosition(std::uint64_t position) const {
    if (_shuffleType == 0) return position;
    const ShufflePermutation order(count(), _seed);
    if (_firstIndex == NotFound) return order.indexAt(position);
    if (position == 0) return _firstIndex;
    // The one that plays first has changed places with the one that the order puts first.
    return position == order.positionOf(_firstIndex) ? order.indexAt(0) : order.indexAt(position);
}

std::uint64_t MediaQueryQueueFeeder::positionForIndex(std::uint64_t index) const {
    if (_shuffleType == 0) return index;
    const ShufflePermutation order(count(), _seed);
    if (_firstIndex == NotFound) return order.positionOf(index);
    if (index == _firstIndex) return 0;
    return index == order.indexAt(0) ? order.positionOf(_firstIndex) : order.positionOf(index);
}

}  // namespace zornic
