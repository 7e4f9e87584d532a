#include "Data Sources/ZRNQueryPlaybackContext.h"

#include "Platform/Media/AVQueueFeeder.h"

namespace zornic {

std::shared_ptr<const QueueFeederClass> ZRNQueryPlaybackContext::queueFeederClass() const {
    return std::dynamic_pointer_cast<const QueueFeederClass>(
        ClassRegistry::shared().classNamed("MusicQueryQueueFeeder"));
}

}  // namespace zornic
