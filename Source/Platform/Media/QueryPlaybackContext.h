#pragma once

#include <memory>
#include <optional>

#include "Platform/Foundation/Object.h"
#include "Platform/Media/MediaQuery.h"

namespace zornic {

class QueueFeederClass;

/** A request to play: what the player's queue is to become. */
class PlaybackContext : public Object {};

/** A request to play the items of a query. Main thread. */
class QueryPlaybackContext : public PlaybackContext {
public:
    explicit QueryPlaybackContext(std::shared_ptr<MediaQuery> query) : _query(std::move(query)) {}

    const std::shared_ptr<MediaQuery>& query() const { return _query; }
    /** Index into the query's items; unset or NotFound: no start item. */
    std::optional<std::uint64_t> startIndex() const { return _startIndex; }
    void setStartIndex(std::optional<std::uint64_t> index) { _startIndex = index; }
    /** 0 in order, 1 shuffled. */
    std::int64_t shuffleType() const { return _shuffleType; }
    void setShuffleType(std::int64_t type) { _shuffleType = type; }
    /** When the start item is what already plays, it goes on without a restart. */
    bool keepPlayingCurrentItemIfPossible() const { return _keepPlaying; }
    void setKeepPlayingCurrentItemIfPossible(bool keep) { _keepPlaying = keep; }
    /** The class of the feeder that the player makes for it; none: the platform's own. */
    virtual std::shared_ptr<const QueueFeederClass> queueFeederClass() const { return nullptr; }

private:
    const std::shared_ptr<MediaQuery> _query;
    std::optional<std::uint64_t> _startIndex;
    std::int64_t _shuffleType = 0;
    bool _keepPlaying = false;
};

}  // namespace zornic
