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
    logLine("not played: " + valueForKey(failure.userInfo, "reason").asText());
    const auto item = std::dynamic_pointer_cast<AVItem>(valueForKey(failure.userInfo, "item").asObject());
    if (_failures++ == 0) _firstTitle = item ? item->mainTitle() : std::string();
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
