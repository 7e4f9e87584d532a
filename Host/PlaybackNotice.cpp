#include "Host/PlaybackNotice.h"

#include "Host/Log.h"
#include "Platform/Foundation/PlatformText.h"
#include "Platform/Foundation/RunLoop.h"
#include "Platform/Foundation/StringFormat.h"
#include "Platform/Media/AVController.h"

namespace helmo {

using namespace zornic;

PlaybackNotice::PlaybackNotice(const Object* player, std::weak_ptr<Window> window)
    : _player(player), _window(std::move(window)) {}

void PlaybackNotice::didMake() {
    Object::didMake();
    _observation = NotificationCenter::defaultCenter().observe(
        AVControllerItemFailedNotification, _player, [this](const Notification& failure) { note(failure); });
}

void PlaybackNotice::note(const Notification& failure) {
    logLine("not played: " + valueForKey(failure.userInfo, "reason").asText());
    const auto item = std::dynamic_pointer_cast<AVItem>(valueForKey(failure.userInfo, "item").asObject());
    if (_failures++ == 0) _firstTitle = item ? item->mainTitle() : std::string();
    if (!_alert) _timeout = RunLoop::main().after(toDuration(patience), [this] { show(); });
}

std::string PlaybackNotice::message() const {
    if (_failures == 1) return formatted(platformText("PLAYBACK_FAILED_MESSAGE"), {_firstTitle});
    return formatted(platformText("PLAYBACK_FAILED_MANY_MESSAGE"), {_failures});
}

void PlaybackNotice::show() {
    const auto window = _window.lock();
    const auto top = window ? window->topPresentedViewController() : nullptr;
    if (!top) return;
    _alert =
        make<AlertController>(platformText("PLAYBACK_FAILED_TITLE"), message(), AlertControllerStyle::Alert);
    _failures = 0;
    _alert->addAction(
        make<AlertAction>(platformText("OK"), AlertActionStyle::Cancel, [weakSelf = weak(this)] {
            if (const auto self = weakSelf.lock()) {
                self->_alert = nullptr;
                self->_timeout.reset();
            }
        }));
    top->presentViewController(_alert, true);
    _timeout = RunLoop::main().after(toDuration(duration), [this] { hide(); });
}

void PlaybackNotice::hide() {
    const auto alert = std::exchange(_alert, nullptr);
    if (!alert) return;
    if (const auto presenter = alert->presentingViewController()) presenter->dismissViewController(true);
    if (_failures > 0) _timeout = RunLoop::main().after(toDuration(patience), [this] { show(); });
}

}  // namespace helmo
