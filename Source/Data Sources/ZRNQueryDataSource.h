#pragma once

#include "Data Sources/ZRNQueryPlaybackContext.h"
#include "Platform/LibraryKit/CompletionQueryDataSource.h"

namespace zornic {

/** The rows of every library list: keeps its query's order in step with the driver's settings, knows which
   row plays, and makes the request that plays from a row. Main thread. */
class ZRNQueryDataSource : public CompletionQueryDataSource {
public:
    using CompletionQueryDataSource::CompletionQueryDataSource;
    void didMake() override;

    bool showsIndexBar() override { return true; }
    /** Whether the row is the current item of a queue that this list would play. */
    bool entityIsNowPlayingAtIndex(std::uint64_t index) override;
    /** Whether the queue is the one that the row would play, whatever its current item. */
    bool queryIsNowPlayingAtIndex(std::uint64_t index);
    /** An item plays the whole list from its place (NotFound when it is not in it) and goes on when it
       already plays; a collection plays its items from the first; none for anything else. */
    std::shared_ptr<PlaybackContext> playbackContextForIndex(std::uint64_t index) override;

    /** Orders the query by the settings of this moment; false when the settings do not concern it. */
    bool _updateQueryPredicatesAndOrdering();
    /** Any thread: orders anew on the main thread, and reloads when that changed anything. */
    void _defaultsDidChangeNotification(const Notification& notification);
    /** The query that a row would play. */
    std::shared_ptr<MediaQuery> _queryForNowPlayingComparisonAtIndex(std::uint64_t index);

private:
    Observation _defaultsObservation;
};

}  // namespace zornic
