#pragma once

#include "Platform/Media/QueryPlaybackContext.h"

namespace zornic {

/** A request to play a query's items, fed by the host's own queue feeder where the host has one. */
class ZRNQueryPlaybackContext : public QueryPlaybackContext {
public:
    using QueryPlaybackContext::QueryPlaybackContext;
    /** The class known as "MusicQueryQueueFeeder" when asked; none without it. */
    std::shared_ptr<const QueueFeederClass> queueFeederClass() const override;
};

}  // namespace zornic
