#include "Platform/Toolkit/NavigationController.h"

#include <algorithm>

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/NavigationTransition.h"
#include "Platform/Toolkit/Window.h"

namespace zornic {

namespace {

constexpr double swipeEdge = 24, swipeSlop = 10, swipeSpeed = 300;  // points; points a second

using Kind = NavigationTransition::Kind;

}  // namespace

NavigationController::NavigationController() = default;

NavigationController::NavigationController(std::shared_ptr<ViewController> root)
    : _rootToPush(std::move(root)) {}

NavigationController::~NavigationController() {
    _transition = nullptr;
    if (_swipe) {  // its view may be kept by somebody else
        _swipe->handler = nullptr;
        _swipe->shouldBegin = nullptr;
    }
    if (_bar) _bar->onBack = nullptr;
}

void NavigationController::didMake() {
    ViewController::didMake();
    if (const auto root = std::exchange(_rootToPush, nullptr)) pushViewController(root, false);
}

// Stack

std::shared_ptr<ViewController> NavigationController::topViewController() const {
    return _stack.empty() ? nullptr : _stack.back();
}

void NavigationController::pushViewController(const std::shared_ptr<ViewController>& controller,
                                              bool animated) {
    const auto self = strong(this);
    const auto pushed = controller;
    endRunningTransition();
    if (!pushed || pushed == self || std::find(_stack.begin(), _stack.end(), pushed) != _stack.end()) return;
    const auto below = topViewController();
    addChildViewController(pushed);
    _stack.push_back(pushed);
    if (isOnView())
        startTransition(std::make_unique<NavigationTransition>(Kind::Push, below, pushed, animated, false));
    else
        changeWithoutView(below, pushed, true);
}

std::shared_ptr<ViewController> NavigationController::popViewControllerAnimated(bool animated) {
    const auto self = strong(this);
    endRunningTransition();
    return _stack.size() > 1 ? popToCount(_stack.size() - 1, animated, false) : nullptr;
}

void NavigationController::popToViewController(const std::shared_ptr<ViewController>& controller,
                                               bool animated) {
    const auto self = strong(this);
    const auto target = controller;
    endRunningTransition();
    const auto at = std::find(_stack.begin(), _stack.end(), target);
    if (at == _stack.end() || target == _stack.back()) return;
    popToCount(static_cast<std::size_t>(at - _stack.begin()) + 1, animated, false);
}

std::shared_ptr<ViewController> NavigationController::popToCount(std::size_t count, bool animated,
                                                                 bool interactive) {
    const auto from = _stack.back();
    const std::vector between(_stack.begin() + static_cast<std::ptrdiff_t>(count), _stack.end() - 1);
    _stack.resize(count);
    for (const auto& popped : between) letGo(popped);
    const auto to = _stack.back();
    if (isOnView())
        startTransition(std::make_unique<NavigationTransition>(Kind::Pop, from, to, animated, interactive));
    else
        changeWithoutView(from, to, false);
    return from;
}

void NavigationController::letGo(const std::shared_ptr<ViewController>& popped) {
    popped->willMoveToParentViewController(nullptr);
    if (popped->isViewLoaded()) popped->view()->removeFromSuperview();
    popped->removeFromParentViewController();
}

/** Off view nobody appears; only the stack and, where it is loaded, the view follow. */
void NavigationController::changeWithoutView(const std::shared_ptr<ViewController>& from,
                                             const std::shared_ptr<ViewController>& to, bool push) {
    if (from) {
        from->endAppearanceTransition();
        if (from->isViewLoaded()) from->view()->removeFromSuperview();
    }
    layoutContent();
    updateBar();
    if (push)
        to->didMoveToParentViewController(this);
    else
        letGo(from);
}

// Transitions

void NavigationController::startTransition(std::unique_ptr<NavigationTransition> transition) {
    const auto self = strong(this);
    _transition = std::move(transition);
    const auto* const running = _transition.get();
    const bool barWasHidden = _barHidden;
    _transition->begin();  // screens show or hide the bar in their will calls
    if (_transition.get() != running) return;

    const auto& content = view();
    const auto& to = _transition->to();
    if (_transition->from() && !_transition->isPush() && _transition->from()->isViewLoaded())
        _contentView->insertSubviewBelow(to->view(), *_transition->from()->view());
    else
        _contentView->addSubview(to->view());
    if (_barHidden != barWasHidden && _transition->isAnimated() && _transition->from())
        _transition->carryBar(navigationBar(), _transition->isPush() == barWasHidden);
    layoutContent();
    if (!_transition->carriesBar() || !_barHidden) updateBar();  // a bar that goes keeps what it shows

    Window* const window = content->window();
    const bool seen = window && !window->isWindowHidden() && RunLoop::hasMain();
    if (_transition->isInteractive()) {
        _transition->setProgress(0);
    } else if (_transition->isAnimated() && _transition->from() && seen) {
        _transition->setProgress(0);
        settleTransition(false);
    } else {
        finishTransition(false);
    }
}

void NavigationController::settleTransition(bool cancelled) {
    _transition->settle(cancelled, [weakSelf = weak(this), cancelled] {
        if (const auto self = weakSelf.lock()) self->finishTransition(cancelled);
    });
}

void NavigationController::finishTransition(bool cancelled) {
    if (!_transition) return;
    const auto self = strong(this);
    const std::shared_ptr transition = std::move(_transition);
    transition->rest();
    const auto& gone = cancelled ? transition->to() : transition->from();
    const bool pops = !transition->isPush() && !cancelled;
    if (cancelled) _stack.push_back(transition->from());
    if (gone && gone->isViewLoaded()) gone->view()->removeFromSuperview();
    transition->end(cancelled, hasAppeared() || !isOnView());
    if (pops && transition->from()) letGo(transition->from());
    if (transition->isPush()) transition->to()->didMoveToParentViewController(this);
    layoutContent();
    updateBar();
    if (Window* const window = isViewLoaded() ? view()->window() : nullptr)
        window->focusSystem().frontScreenDidChange();
}

void NavigationController::endRunningTransition() {
    if (_transition) finishTransition(_transition->isCancelling() || _transition->isHeld());
}

void NavigationController::swipe(PanGestureRecognizer& recognizer) {
    const auto self = strong(this);
    const double width = view()->frame().width();
    const double travel = recognizer.translation();
    if (recognizer.state() == GestureState::Began) {
        swipeBegan();
        _swipeStart = travel - (_transition ? _transition->progress() * width : 0);
    }
    if (!_transition || !_transition->isHeld() || width <= 0) return;
    _transition->setProgress((travel - _swipeStart) / width);
    switch (recognizer.state()) {
        case GestureState::Ended: {
            const double speed = recognizer.velocity();
            settleTransition(speed <= swipeSpeed && (speed < -swipeSpeed || _transition->progress() <= 0.5));
            break;
        }
        case GestureState::Cancelled:
        case GestureState::Failed:
            settleTransition(true);
            break;
        default:
            break;
    }
}

void NavigationController::swipeBegan() {
    if (_transition && _transition->isInteractive()) {
        _transition->hold();
        return;
    }
    endRunningTransition();
    if (_stack.size() < 2 || !isOnView()) return;
    if (navigationBarShouldPopItem(*navigationBar(), _stack.back()->navigationItem()))
        popToCount(_stack.size() - 1, true, true);
}

// Bar

const std::shared_ptr<NavigationBar>& NavigationController::navigationBar() {
    if (!_bar) {
        _bar = make<NavigationBar>();
        _bar->setHidden(_barHidden);
        _bar->onBack = [this] { backPressed(); };
        updateBar();
    }
    return _bar;
}

void NavigationController::setNavigationBarHidden(bool hidden, bool) {
    if (hidden == _barHidden) return;
    _barHidden = hidden;
    if (_transition) return;  // the transition takes the bar along
    layoutContent();
}

void NavigationController::updateBar() {
    if (!_bar) return;
    std::vector<std::shared_ptr<NavigationItem>> items;
    for (const auto& controller : _stack) items.push_back(controller->navigationItem());
    _bar->setItems(std::move(items));
}

void NavigationController::backPressed() {
    const auto self = strong(this);
    endRunningTransition();
    if (_stack.size() < 2) return;
    if (navigationBarShouldPopItem(*navigationBar(), _stack.back()->navigationItem()))
        popViewControllerAnimated(true);
}

void NavigationController::ZRN_pushNowPlayingViewControllerAnimated(bool animated) {
    if (auto* const above = navigationController()) above->ZRN_pushNowPlayingViewControllerAnimated(animated);
}

// View

void NavigationController::loadView() {
    ViewController::loadView();
    const auto root = view();
    _contentView = make<View>();
    root->addSubview(_contentView);
    root->addSubview(navigationBar());
    _swipe = make<PanGestureRecognizer>(PanGestureRecognizer::Axis::Horizontal, swipeSlop);
    _swipe->direction = 1;
    _swipe->handler = [this](PanGestureRecognizer& recognizer) { swipe(recognizer); };
    _swipe->shouldBegin = [this](const Touch& touch) {
        if (_transition && _transition->isInteractive()) return true;  // caught in the middle, anywhere
        return _stack.size() > 1 && view()->convertFromWindow(touch.location).x <= swipeEdge;
    };
    root->addGestureRecognizer(_swipe);
}

void NavigationController::viewDidLayoutSubviews() {
    ViewController::viewDidLayoutSubviews();
    layoutContent();
}

Rect NavigationController::contentFrame() const {
    const Size size = _contentView->frame().size;
    const double top = _barHidden ? 0 : NavigationBar::height;
    return {0, top, size.width, std::max(0.0, size.height - top)};
}

void NavigationController::layoutContent() {
    if (!_contentView) return;
    const Rect bounds = view()->bounds();
    _contentView->setFrame(bounds);
    _bar->setFrame({0, 0, bounds.width(), NavigationBar::height});
    _bar->setHidden(_barHidden && !(_transition && _transition->carriesBar()));
    const auto top = topViewController();
    if (!top) return;
    const auto& shown = top->view();
    if (!_transition && shown->superview() != _contentView.get()) _contentView->addSubview(shown);
    shown->setFrame(contentFrame());  // in a transition the other screen keeps its own
}

// Appearance

void NavigationController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    if (const auto top = topViewController()) top->beginAppearanceTransition(true, animated);
    layoutContent();
}

void NavigationController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    const auto top = topViewController();
    if (top && !_transition) top->endAppearanceTransition();
}

void NavigationController::viewWillDisappear(bool animated) {
    ViewController::viewWillDisappear(animated);
    endRunningTransition();
    if (const auto top = topViewController()) top->beginAppearanceTransition(false, animated);
}

void NavigationController::viewDidDisappear(bool animated) {
    ViewController::viewDidDisappear(animated);
    if (const auto top = topViewController()) top->endAppearanceTransition();
}

std::shared_ptr<View> NavigationController::preferredFocusedItem() {
    const auto top = topViewController();
    return top ? top->preferredFocusedItem() : nullptr;
}

std::shared_ptr<ViewController> NavigationController::contentViewController() {
    const auto top = topViewController();
    return top ? top->contentViewController() : ViewController::contentViewController();
}

bool NavigationController::handleBack() {
    const auto self = strong(this);
    const auto top = topViewController();
    if (top && top->handleBack()) return true;
    if (_stack.size() < 2) return false;
    backPressed();
    return true;
}

}  // namespace zornic
