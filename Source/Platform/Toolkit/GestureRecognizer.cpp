#include "Platform/Toolkit/GestureRecognizer.h"

#include <cmath>

namespace zornic {

namespace {

/** How far back velocity looks: long enough to even out a digitiser's jitter, short enough that a finger that
   has come to rest throws nothing. */
constexpr auto recentTime = std::chrono::milliseconds(80);
constexpr double tapSlop = 10;

}  // namespace

bool PanGestureRecognizer::touchBegan(const Touch& touch) {
    setState(GestureState::Possible);
    _start = touch;
    _recent = {touch};
    _translation = _velocity = 0;
    return isEnabled() && (!shouldBegin || shouldBegin(touch));
}

void PanGestureRecognizer::touchMoved(const Touch& touch) {
    follow(touch);
    if (state() == GestureState::Began || state() == GestureState::Changed) {
        setState(GestureState::Changed);
        notify();
        return;
    }
    if (state() != GestureState::Possible) return;
    const double travel = std::abs(_translation);
    const double aside = std::abs(across(touch.location) - across(_start.location));
    if (std::max(travel, aside) <= _slop) return;
    if (aside > travel || _translation * direction < 0) {
        setState(GestureState::Failed);
    } else {
        setState(GestureState::Began);
        notify();
    }
}

void PanGestureRecognizer::touchEnded(const Touch& touch) {
    const bool underWay = state() == GestureState::Began || state() == GestureState::Changed;
    follow(touch);
    setState(underWay ? GestureState::Ended : GestureState::Failed);
    if (underWay) notify();
}

void PanGestureRecognizer::touchCancelled(const Touch&) {
    const bool underWay = state() == GestureState::Began || state() == GestureState::Changed;
    setState(underWay ? GestureState::Cancelled : GestureState::Failed);
    if (underWay) notify();
}

void PanGestureRecognizer::follow(const Touch& touch) {
    _translation = along(touch.location) - along(_start.location);
    _recent.push_back(touch);
    while (_recent.size() > 1 && touch.time - _recent.front().time > recentTime) _recent.pop_front();
    const Seconds span = touch.time - _recent.front().time;
    const double moved = along(touch.location) - along(_recent.front().location);
    _velocity = span.count() > 0 ? moved / span.count() : 0;
}

void PanGestureRecognizer::notify() {
    const auto self = shared_from_this();
    if (handler) handler(*this);
}

bool TapGestureRecognizer::touchBegan(const Touch& touch) {
    setState(GestureState::Possible);
    _start = touch;
    return isEnabled();
}

void TapGestureRecognizer::touchMoved(const Touch& touch) {
    const auto moved = touch.location - _start.location;
    if (std::hypot(moved.x, moved.y) > tapSlop) setState(GestureState::Failed);
}

void TapGestureRecognizer::touchEnded(const Touch& touch) {
    touchMoved(touch);
    if (state() != GestureState::Possible) return;
    const auto self = shared_from_this();
    setState(GestureState::Ended);
    if (handler) handler(*this);
}

void TapGestureRecognizer::touchCancelled(const Touch&) { setState(GestureState::Failed); }

}  // namespace zornic
