#include "Platform/Toolkit/NavigationTransition.h"

#include <algorithm>

#include "Platform/Toolkit/Animation.h"

namespace zornic {

namespace {

constexpr Seconds slideDuration{0.3};

void moveView(const std::shared_ptr<ViewController>& controller, Point offset) {
    if (controller && controller->isViewLoaded()) controller->view()->layer()->setPresentationOffset(offset);
}

void turn(const std::shared_ptr<ViewController>& controller, bool appears, bool animated) {
    if (!controller) return;
    controller->beginAppearanceTransition(appears, animated);
    controller->endAppearanceTransition();
}

}  // namespace

NavigationTransition::NavigationTransition(Kind kind, std::shared_ptr<ViewController> from,
                                           std::shared_ptr<ViewController> to, bool animated,
                                           bool interactive)
    : _kind(kind),
      _from(std::move(from)),
      _to(std::move(to)),
      _animated(animated),
      _interactive(interactive),
      _coordinator(animated ? make<TransitionCoordinator>(interactive) : nullptr),
      _held(interactive) {}

void NavigationTransition::begin() {
    if (_coordinator) {
        if (_from) _from->setTransitionCoordinator(_coordinator);
        _to->setTransitionCoordinator(_coordinator);
    }
    if (_from) _from->beginAppearanceTransition(false, _animated);
    _to->beginAppearanceTransition(true, _animated);
}

void NavigationTransition::end(bool cancelled, bool appeared) {
    if (_coordinator && _interactive) _coordinator->interactionEnded(cancelled);
    if (cancelled) {
        turn(_to, false, _animated);
        turn(_from, true, _animated);
        return;
    }
    if (_from) _from->endAppearanceTransition();
    if (appeared) _to->endAppearanceTransition();
}

void NavigationTransition::setProgress(double progress) {
    _progress = std::clamp(progress, 0.0, 1.0);
    moveView(isPush() ? _to : _from, upperOffset());
    moveView(isPush() ? _from : _to, lowerOffset());
    if (_bar) _bar->layer()->setPresentationOffset(_barIsUpper ? upperOffset() : lowerOffset());
}

Point NavigationTransition::upperOffset() const {
    const double width = _to->view()->frame().width();
    return {width * (isPush() ? 1 - _progress : _progress), 0};
}

Point NavigationTransition::lowerOffset() const {
    const double width = _to->view()->frame().width();
    return {-width / 3 * (isPush() ? _progress : 1 - _progress), 0};
}

void NavigationTransition::carryBar(std::shared_ptr<NavigationBar> bar, bool withUpperScreen) {
    _bar = std::move(bar);
    _barIsUpper = withUpperScreen;
}

void NavigationTransition::hold() {
    _motion.reset();
    _held = true;
}

void NavigationTransition::settle(bool cancelled, std::function<void()> done) {
    _held = false;
    _cancelling = cancelled;
    const double from = _progress, to = cancelled ? 0 : 1;
    _motion = animate(
        slideDuration * std::max(0.1, std::abs(to - from)), easeOut,
        [this, from, to](double step) { setProgress(from + (to - from) * step); },
        [done = std::move(done)](bool finished) {
            if (finished) done();
        });
}

void NavigationTransition::rest() {
    _motion.reset();
    moveView(_from, {});
    moveView(_to, {});
    if (_bar) _bar->layer()->setPresentationOffset({});
}

}  // namespace zornic
