#pragma once

#include <memory>

#include "Platform/Foundation/ClassRegistry.h"
#include "Platform/Foundation/IndexPath.h"
#include "Platform/Media/AVItem.h"
#include "Platform/Media/MediaQuery.h"

namespace zornic {

class QueryPlaybackContext;

/** Where the player's queue comes from: items by position in playing order, made when asked for. Main thread.
 */
class AVQueueFeeder : public Object {
public:
    virtual std::uint64_t count() const = 0;
    /** The item at a position in playing order; none beyond the end or when it is gone. */
    virtual std::shared_ptr<AVItem> itemAtPosition(std::uint64_t position) = 0;
    /** Position at which playing starts. */
    virtual std::uint64_t startPosition() const { return 0; }
    virtual bool canSkipCurrentItem() const { return true; }
    /** Changes the order of playing; the item at `current` stays the current one (beyond the end: there is
       none). Returns its new position, which becomes the start position. */
    virtual std::uint64_t setShuffleType(std::int64_t type, std::uint64_t current) = 0;
    /** Position of an item of the library; NotFound when it is not in the queue. */
    virtual std::uint64_t positionOfMediaItem(const MediaItem& item) const = 0;
};

/** Feeds the items of a query, in its order or shuffled. The shuffled order is a permutation computed by
   position, so a queue of a million costs nothing. */
class MediaQueryQueueFeeder : public AVQueueFeeder {
public:
    /** `startIndex`: into the query's items; none or NotFound: the first in playing order. `seed` fixes the
     * shuffle. */
    MediaQueryQueueFeeder(std::shared_ptr<MediaQuery> query, std::optional<std::uint64_t> startIndex,
                          std::int64_t shuffleType, std::uint64_t seed);

    const std::shared_ptr<MediaQuery>& query() const { return _query; }
    std::uint64_t count() const override;
    std::shared_ptr<AVItem> itemAtPosition(std::uint64_t position) override;
    std::uint64_t startPosition() const override { return _startPosition; }
    std::uint64_t setShuffleType(std::int64_t type, std::uint64_t current) override;
    std::uint64_t positionOfMediaItem(const MediaItem& item) const override;

private:
    std::uint64_t indexForPosition(std::uint64_t position) const;
    std::uint64_t positionForIndex(std::uint64_t index) const;

    const std::shared_ptr<MediaQuery> _query;
    const std::shared_ptr<const MediaEntityList> _items;
    std::int64_t _shuffleType;
    std::uint64_t _seed;
    /** While shuffled: the index that plays first, swapped to the front of the permutation; NotFound: none.
     */
    std::uint64_t _firstIndex = NotFound;
    std::uint64_t _startPosition = 0;
};

/** A class of feeders, known by name at run time. */
class QueueFeederClass : public ClassDescriptor {
public:
    virtual std::shared_ptr<AVQueueFeeder> makeFeeder(const QueryPlaybackContext& context,
                                                      std::uint64_t seed) const = 0;
};

}  // namespace zornic
