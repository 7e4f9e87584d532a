#include "Platform/Toolkit/Presentation.h"

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/Animation.h"
#include "Platform/Toolkit/Window.h"

namespace zornic {

namespace {

constexpr Seconds riseDuration{0.35};

}  // namespace

Presentation::Presentation(std::weak_ptr<ViewController> presenter, std::shared_ptr<ViewController> presented)
    : _presenter(std::move(presenter)), _presented(std::move(presented)) {}

void Presentation::enter(int transition, Task completion) {
    const auto self = strong(this);
    const auto presenter = _presenter.lock();
    if (!presenter || _state != State::New) return;
    _state = State::Entering;
    _completion = std::move(completion);
    if (_presented->presentationStyle() == PresentationStyle::FullScreen)
        _covered = weak(presenter->outermostViewController());
    const auto covered = _covered.lock();
    _coveredWasOnView = covered && covered->isOnView();
    placeView();

    const bool animated = transition != PresentationTransition::None;
    showProgress(animated ? 0 : 1);
    if (animated) {
        _coordinator = make<TransitionCoordinator>(false);
        _presented->setTransitionCoordinator(_coordinator);
        if (covered) covered->setTransitionCoordinator(_coordinator);
    }
    if (covered) covered->beginAppearanceTransition(false, animated);
    if (_state == State::Entering) _presented->beginAppearanceTransition(true, animated);
    if (_state == State::Entering) move(1, animated);
}

void Presentation::leave(int transition, double from, bool uncover, Task completion) {
    const auto self = strong(this);
    if (_state != State::Shown) return;
    _state = State::Leaving;
    _completion = std::move(completion);
    const auto covered = _covered.lock();
    _uncovers = uncover && covered && coveredShouldAppear();
    showCovered(true);

    const bool animated = transition != PresentationTransition::None;
    showProgress(from);
    if (animated) {
        _coordinator = make<TransitionCoordinator>(false);
        _presented->setTransitionCoordinator(_coordinator);
        if (_uncovers) covered->setTransitionCoordinator(_coordinator);
    }
    _presented->beginAppearanceTransition(false, animated);
    if (_uncovers && _state == State::Leaving) covered->beginAppearanceTransition(true, animated);
    // What was on view all the time is in front at once, though it does not appear.
    if (_state == State::Leaving && _presented->isViewLoaded() && _presented->view()->window())
        _presented->view()->window()->focusSystem().update();
    if (_state == State::Leaving) move(0, animated);
}

double Presentation::finish() {
    const double reached = _progress;
    if (_state != State::Entering && _state != State::Leaving) return reached;
    const auto self = strong(this);
    const bool entered = _state == State::Entering;
    _state = entered ? State::Shown : State::Gone;
    _motion.reset();
    showProgress(1);
    const auto presented = _presented;
    const auto covered = _covered.lock();
    const auto completion = std::exchange(_completion, nullptr);
    if (entered) {
        showCovered(false);
        if (covered) covered->endAppearanceTransition();
        presented->endAppearanceTransition();
    } else {
        Window* const window = presented->isViewLoaded() ? presented->view()->window() : nullptr;
        if (presented->isViewLoaded()) presented->view()->removeFromSuperview();
        presented->endAppearanceTransition();
        if (_uncovers && covered) covered->endAppearanceTransition();
        if (window) window->focusSystem().update();
        _presented = nullptr;
    }
    _coordinator = nullptr;
    if (completion) completion();
    return reached;
}

void Presentation::abandon() {
    const auto self = strong(this);
    _state = State::Gone;
    _motion.reset();
    _completion = nullptr;
    const auto presented = std::exchange(_presented, nullptr);
    if (!presented) return;
    if (presented->isViewLoaded()) presented->view()->removeFromSuperview();
    presented->beginAppearanceTransition(false, false);
    presented->endAppearanceTransition();
}

void Presentation::placeView() {
    const auto presenter = _presenter.lock();
    ViewController* const outermost = presenter->outermostViewController();
    Window* const window = outermost->isViewLoaded() ? outermost->view()->window() : nullptr;
    if (window) window->addPresentedView(_presented->view());
}

void Presentation::move(double to, bool animated) {
    Window* const window = _presented->isViewLoaded() ? _presented->view()->window() : nullptr;
    if (!animated || !window || window->isWindowHidden() || !RunLoop::hasMain()) {  // nobody sees it move
        finish();
        return;
    }
    _motion = animate(
        riseDuration, easeOut,
        [this, from = _progress, to](double step) { showProgress(from + (to - from) * step); },
        [weakSelf = weak(this)](bool finished) {
            const auto self = finished ? weakSelf.lock() : nullptr;
            if (self) self->finish();
        });
}

/** A full screen comes up from below the window's edge; what lies over a screen that stays on view fades in.
 */
void Presentation::showProgress(double progress) {
    _progress = progress;
    if (!_presented->isViewLoaded()) return;
    const auto& view = _presented->view();
    if (_presented->presentationStyle() == PresentationStyle::FullScreen)
        view->layer()->setPresentationOffset({0, view->frame().height() * (1 - progress)});
    else
        view->setAlpha(progress);
}

/** What is wholly covered needs no drawing. */
void Presentation::showCovered(bool shown) {
    const auto covered = _covered.lock();
    if (covered && covered->isViewLoaded() && covered->view()->window()) covered->view()->setHidden(!shown);
}

bool Presentation::coveredShouldAppear() const {
    const auto covered = _covered.lock();
    Window* const window = covered->isViewLoaded() ? covered->view()->window() : nullptr;
    return window ? !window->isWindowHidden() : _coveredWasOnView;
}

}  // namespace zornic
