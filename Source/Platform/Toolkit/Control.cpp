#include "Platform/Toolkit/Control.h"

#include <algorithm>
#include <cassert>

namespace zornic {

namespace {

constexpr double minimumHitLength = 44;
/** A finger that wanders this far off still presses. */
constexpr double pressSlack = 20;

}  // namespace

void Control::addTarget(const std::shared_ptr<Object>& target, Action action, unsigned events) {
    assert(target);
    _targets.push_back({target, std::move(action), events});
}

void Control::removeAllTargets() { _targets.clear(); }

void Control::sendActions(unsigned event) {
    if (!_enabled) return;
    const auto self = strong(this);
    std::erase_if(_targets, [](const Target& target) { return target.target.expired(); });
    for (const Target& target : std::vector(_targets)) {
        if (!(target.events & event)) continue;
        if (const auto alive = target.target.lock()) target.action(self);
    }
}

void Control::setEnabled(bool enabled) {
    if (enabled == _enabled) return;
    const auto self = strong(this);
    if (!enabled) endPress(ControlEvent::TouchCancel);
    _enabled = enabled;
}

void Control::setSelected(bool selected) { _selected = selected; }
void Control::setHighlighted(bool highlighted) { _highlighted = highlighted; }

/** Lets go of a press that is under way, then says how it ended. */
void Control::endPress(unsigned event) {
    if (!std::exchange(_tracking, false)) return;
    const auto self = strong(this);
    setHighlighted(false);
    sendActions(event);
}

Rect Control::hitArea() const {
    const Rect area = bounds();
    return area.inset(std::min(0.0, (area.width() - minimumHitLength) / 2),
                      std::min(0.0, (area.height() - minimumHitLength) / 2));
}

bool Control::pointInside(Point point) const { return hitArea().contains(point); }

bool Control::isInside(const Touch& touch) const {
    return hitArea().inset(-pressSlack, -pressSlack).contains(convertFromWindow(touch.location));
}

void Control::touchBegan(const Touch&) { knobPressBegan(); }

void Control::touchMoved(const Touch& touch) {
    if (!_tracking) return;
    const bool inside = isInside(touch);
    if (inside != _highlighted) setHighlighted(inside);
}

void Control::touchEnded(const Touch& touch) {
    endPress(isInside(touch) ? ControlEvent::TouchUpInside : ControlEvent::TouchUpOutside);
}

void Control::touchCancelled(const Touch&) { endPress(ControlEvent::TouchCancel); }

void Control::knobPressBegan() {
    if (!_enabled || _tracking) return;
    const auto self = strong(this);
    _tracking = true;
    setHighlighted(true);
    sendActions(ControlEvent::TouchDown);
}

void Control::knobPressEnded(bool cancelled) {
    endPress(cancelled ? ControlEvent::TouchCancel : ControlEvent::TouchUpInside);
}

void Control::didMoveToWindow() {
    View::didMoveToWindow();
    if (!window()) endPress(ControlEvent::TouchCancel);
}

}  // namespace zornic
