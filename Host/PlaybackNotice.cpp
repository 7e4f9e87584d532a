#include "Host/PlaybackNotice.h"

#include "Host/Log.h"
#include "Platform/Foundation/PlatformText.h"
#include "Platform/Foundation/StringFormat.h"
#include "Platform/Media/AVController.h"

namespace helmo {

using namespace zornic;

void PlaybackNotice::didMake() {
    Object::didMake();
    _observation = NotificationCenter::defaultCenter().observe(
        AVControllerItemFailedNotification, _player, [this](const Notification& failure) { note(failure); });
}

void PlaybackNotice::note(const Notification& failure) {
    const auto item = std::dynamic_pointer_cast<AVItem>(valueForKey(failure.userInfo, "item").asObject());
    const std::string title = item ? item->mainTitle() : std::string();
    // By then it has no file that the reason could name.
    const bool hasLeft = item && item->location().empty();
    logLine("not played: " + (hasLeft ? title + ": no longer in the library"
                                      : valueForKey(failure.userInfo, "reason").asText()));
    if (_failures++ == 0) _firstTitle = title;
    _notices->tell("playback", [weakSelf = weak(this)] {
        const auto self = weakSelf.lock();
        return self ? self->takeText() : HostNotices::Text();
    });
}

HostNotices::Text PlaybackNotice::takeText() {
    const auto failures = std::exchange(_failures, 0);
    return {platformText("PLAYBACK_FAILED_TITLE"),
            failures == 1 ? formatted(platformText("PLAYBACK_FAILED_MESSAGE"), {_firstTitle})
                          : formatted(platformText("PLAYBACK_FAILED_MANY_MESSAGE"), {failures})};
}

}  // namespace helmo
