#include "Platform/Toolkit/WindowTouches.h"

namespace zornic {

void WindowTouches::down(const std::shared_ptr<View>& hit, const Touch& touch) {
    _active = true;
    _taken = false;
    _hit = hit;
    _last = touch;
    _recognizers.clear();
    std::vector<std::shared_ptr<GestureRecognizer>> around;
    for (View* view = hit.get(); view; view = view->superview())
        around.insert(around.end(), view->gestureRecognizers().begin(), view->gestureRecognizers().end());
    for (const auto& recognizer : around) {
        if (!recognizer->isEnabled() || !recognizer->touchBegan(touch)) continue;
        _recognizers.push_back(recognizer);
        if (takenBy(recognizer, touch)) return;
    }
    if (hit) hit->touchBegan(touch);
}

void WindowTouches::move(const Touch& touch) {
    _last = touch;
    for (const auto& recognizer : watching()) {
        recognizer->touchMoved(touch);
        if (_taken || takenBy(recognizer, touch)) return;
    }
    if (const auto hit = hitOnWindow(touch)) hit->touchMoved(touch);
}

void WindowTouches::up(const Touch& touch) {
    _last = touch;
    _active = false;
    for (const auto& recognizer : watching()) {
        recognizer->touchEnded(touch);
        if (_taken || takenBy(recognizer, touch)) return;
    }
    if (const auto hit = hitOnWindow(touch)) {
        _hit.reset();
        hit->touchEnded(touch);
    }
}

void WindowTouches::cancel(TimePoint time) {
    if (!std::exchange(_active, false)) return;
    const Touch touch{_last.location, time};
    for (const auto& recognizer : watching()) recognizer->touchCancelled(touch);
    _recognizers.clear();
    cancelHit(touch);
}

std::vector<std::shared_ptr<GestureRecognizer>> WindowTouches::watching() const {
    std::vector<std::shared_ptr<GestureRecognizer>> alive;
    for (const auto& weakRecognizer : _recognizers)
        if (auto recognizer = weakRecognizer.lock()) alive.push_back(std::move(recognizer));
    return alive;
}

bool WindowTouches::takenBy(const std::shared_ptr<GestureRecognizer>& recognizer, const Touch& touch) {
    const GestureState state = recognizer->state();
    if (state != GestureState::Began && state != GestureState::Changed && state != GestureState::Ended)
        return false;
    const auto others = watching();
    _taken = true;
    _recognizers = {recognizer};
    for (const auto& other : others)
        if (other != recognizer) other->touchCancelled(touch);
    cancelHit(touch);
    return true;
}

void WindowTouches::cancelHit(const Touch& touch) {
    const auto hit = _hit.lock();
    _hit.reset();
    if (hit) hit->touchCancelled(touch);
}

std::shared_ptr<View> WindowTouches::hitOnWindow(const Touch& touch) {
    auto hit = _hit.lock();
    if (hit && hit->window()) return hit;
    cancelHit(touch);
    return nullptr;
}

}  // namespace zornic
