#include "Host/HostNotices.h"

#include <algorithm>

#include "Platform/Foundation/PlatformText.h"
#include "Platform/Foundation/RunLoop.h"

namespace helmo {

using namespace zornic;

void HostNotices::tell(const std::string& cause, std::function<Text()> text) {
    const auto same = std::ranges::find(_waiting, cause, &Notice::cause);
    if (same != _waiting.end())
        same->text = std::move(text);
    else
        _waiting.push_back({cause, std::move(text)});
    if (!_alert && !_timer) waitForNext();
}

void HostNotices::tellOnce(const std::string& cause, Text text) {
    if (_told.insert(cause).second) tell(cause, [text = std::move(text)] { return text; });
}

void HostNotices::waitForNext() {
    _timer.reset();
    if (!_waiting.empty()) _timer = RunLoop::main().after(toDuration(patience), [this] { showNext(); });
}

void HostNotices::showNext() {
    const auto window = _window.lock();
    const auto top = window ? window->topPresentedViewController() : nullptr;
    if (!top) return;
    if (std::dynamic_pointer_cast<AlertController>(top)) return waitForNext();
    const Text text = _waiting.front().text();
    _waiting.pop_front();
    _alert = make<AlertController>(text.title, text.message, AlertControllerStyle::Alert);
    _alert->addAction(
        make<AlertAction>(platformText("OK"), AlertActionStyle::Cancel, [weakSelf = weak(this)] {
            const auto self = weakSelf.lock();
            if (!self) return;
            self->_alert = nullptr;
            self->waitForNext();
        }));
    top->presentViewController(_alert, true);
    _timer = RunLoop::main().after(toDuration(duration), [this] { hide(); });
}

void HostNotices::hide() {
    if (_alert->presentedViewController()) {  // a question above it, which would go with it
        _timer = RunLoop::main().after(toDuration(patience), [this] { hide(); });
        return;
    }
    const auto alert = std::exchange(_alert, nullptr);
    waitForNext();
    if (const auto presenter = alert->presentingViewController()) presenter->dismissViewController(true);
}

}  // namespace helmo
