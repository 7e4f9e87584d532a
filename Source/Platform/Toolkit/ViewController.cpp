#include "Platform/Toolkit/ViewController.h"

#include <algorithm>

#include "Platform/Toolkit/NavigationController.h"
#include "Platform/Toolkit/Presentation.h"
#include "Platform/Toolkit/TabBarController.h"
#include "Platform/Toolkit/Window.h"

namespace zornic {

namespace {

template <class Container>
Container* nearestContainer(ViewController* from) {
    for (; from; from = from->parentViewController())
        if (auto* const container = dynamic_cast<Container*>(from)) return container;
    return nullptr;
}

}  // namespace

ViewController::~ViewController() {
    if (_presentation) _presentation->abandon();
    for (const auto& child : _children) child->_parent = nullptr;
    if (_view) _view->setViewController(nullptr);
}

// View

const std::shared_ptr<View>& ViewController::view() {
    if (!_view) {
        loadView();
        if (!_view) ViewController::loadView();
        viewDidLoad();
    }
    return _view;
}

void ViewController::loadView() {
    auto view = make<View>();
    view->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleHeight);
    setView(std::move(view));
}

void ViewController::setView(std::shared_ptr<View> view) {
    if (view == _view) return;
    const auto old = std::exchange(_view, std::move(view));
    if (_view) _view->setViewController(this);
    if (!old) return;
    old->setViewController(nullptr);
    View* const parent = old->superview();
    if (_view && parent) {  // the new one takes the old one's place
        _view->setFrame(old->frame());
        parent->insertSubviewBelow(_view, *old);
    }
    old->removeFromSuperview();
}

// Appearance

void ViewController::viewWillAppear(bool) {}
void ViewController::viewDidAppear(bool) {}
void ViewController::viewWillDisappear(bool) {}
void ViewController::viewDidDisappear(bool) {}

std::vector<std::shared_ptr<ViewController>> ViewController::forwardedChildren() const {
    std::vector<std::shared_ptr<ViewController>> children;
    std::copy_if(_children.begin(), _children.end(), std::back_inserter(children),
                 [this](const auto& child) { return shouldForwardAppearanceToChild(*child); });
    return children;
}

void ViewController::beginAppearanceTransition(bool appearing, bool animated) {
    if (appearing == isOnView()) return;
    const auto self = strong(this);
    _appearance = appearing ? Appearance::Appearing : Appearance::Disappearing;
    _appearanceAnimated = animated;
    if (appearing) {
        loadViewIfNeeded();
        viewWillAppear(animated);
    } else {
        viewWillDisappear(animated);
    }
    for (const auto& child : forwardedChildren()) child->beginAppearanceTransition(appearing, animated);
}

void ViewController::endAppearanceTransition() {
    const bool appears = _appearance == Appearance::Appearing;
    if (!appears && _appearance != Appearance::Disappearing) return;
    const auto self = strong(this);
    _appearance = appears ? Appearance::Appeared : Appearance::Disappeared;
    if (appears)
        viewDidAppear(_appearanceAnimated);
    else
        viewDidDisappear(_appearanceAnimated);
    for (const auto& child : forwardedChildren()) child->endAppearanceTransition();
    if (appears && _view && _view->window()) _view->window()->focusSystem().update();
}

// Description

void ViewController::setTitle(const std::string& title) {
    _title = title;
    if (_navigationItem) _navigationItem->setTitle(title);
}

const std::shared_ptr<NavigationItem>& ViewController::navigationItem() {
    if (!_navigationItem) {
        _navigationItem = make<NavigationItem>();
        _navigationItem->setTitle(title());
    }
    return _navigationItem;
}

void ViewController::setTabBarItem(std::optional<TabBarItem> item) {
    if (item == _tabBarItem) return;
    _tabBarItem = std::move(item);
    if (auto* const container = nearestContainer<TabBarController>(_parent)) container->tabBarItemDidChange();
}

// Tree

void ViewController::addChildViewController(const std::shared_ptr<ViewController>& child) {
    if (!child || child->_parent == this || child.get() == this) return;
    if (child->_parent) {
        child->willMoveToParentViewController(nullptr);
        child->removeFromParentViewController();
    }
    child->willMoveToParentViewController(this);
    child->_parent = this;
    _children.push_back(child);
    if (!isOnView() || !shouldForwardAppearanceToChild(*child)) return;
    child->beginAppearanceTransition(true, false);
    if (hasAppeared()) child->endAppearanceTransition();
}

void ViewController::removeFromParentViewController() {
    if (!_parent) return;
    const auto self = strong(this);
    beginAppearanceTransition(false, false);
    endAppearanceTransition();
    if (auto* const parent = std::exchange(_parent, nullptr)) std::erase(parent->_children, self);
    didMoveToParentViewController(nullptr);
}

NavigationController* ViewController::navigationController() const {
    return nearestContainer<NavigationController>(_parent);
}

TabBarController* ViewController::tabBarController() const {
    return nearestContainer<TabBarController>(_parent);
}

ViewController* ViewController::outermostViewController() {
    auto* controller = this;
    while (controller->_parent) controller = controller->_parent;
    return controller;
}

// Presentation

std::shared_ptr<ViewController> ViewController::presentedViewController() const {
    const auto* controller = this;
    while (!controller->_presented && controller->_parent) controller = controller->_parent;
    return controller->_presented;
}

std::shared_ptr<ViewController> ViewController::presentingViewController() const {
    for (const auto* controller = this; controller; controller = controller->_parent)
        if (const auto presentation = controller->_shownBy.lock()) return presentation->presenter();
    return nullptr;
}

void ViewController::presentViewController(const std::shared_ptr<ViewController>& controller, bool animated,
                                           Task completion) {
    presentViewControllerWithTransition(
        controller, animated ? PresentationTransition::Rise : PresentationTransition::None,
        std::move(completion));
}

void ViewController::presentViewControllerWithTransition(const std::shared_ptr<ViewController>& controller,
                                                         int transition, Task completion) {
    // A full screen covers the containers too, so it is theirs: nothing else can be over them meanwhile.
    if (_parent && controller && controller->presentationStyle() == PresentationStyle::FullScreen)
        return outermostViewController()->presentViewControllerWithTransition(controller, transition,
                                                                              std::move(completion));
    const auto self = strong(this);
    const auto refused = [&] {
        return !controller || controller == self || _presented || controller->_parent ||
               controller->_shownBy.lock();
    };
    if (refused()) return;
    if (const auto leaving = _presentation) leaving->finish();
    if (refused()) return;  // who heard of that end presented something
    _presented = controller;
    _presentation = make<Presentation>(self, controller);
    controller->_shownBy = _presentation;
    controller->_lastTransition = transition;
    std::shared_ptr(_presentation)->enter(transition, std::move(completion));
}

void ViewController::dismissViewController(bool animated, Task completion) {
    dismissViewControllerWithTransition(
        animated ? PresentationTransition::Fall : PresentationTransition::None, std::move(completion));
}

void ViewController::dismissViewControllerWithTransition(int transition, Task completion) {
    const auto self = strong(this);
    if (!_presented) {
        if (auto* const outermost = outermostViewController(); outermost->_presented)
            outermost->dismissViewControllerWithTransition(transition, std::move(completion));
        else if (const auto presenter = presentingViewController())
            presenter->dismissViewControllerWithTransition(transition, std::move(completion));
        else if (completion)
            completion();
        return;
    }
    const auto presented = _presented;
    const auto presentation = _presentation;
    presented->dismissNestedPresentations();
    const double from = presentation->finish();
    if (_presented != presented) {  // who heard of that end dismissed it already
        if (completion) completion();
        return;
    }
    presented->_lastTransition = transition;
    presented->_shownBy.reset();
    _presented = nullptr;
    presentation->leave(transition, from, true, std::move(completion));
}

/** What this and its children present goes without a sight of what it covered, for that goes next. */
void ViewController::dismissNestedPresentations() {
    for (const auto& child : std::vector(_children)) child->dismissNestedPresentations();
    const auto presentation = _presentation;
    if (!_presented) return;
    presentation->finish();
    const auto presented = std::exchange(_presented, nullptr);
    if (!presented) return;
    presented->dismissNestedPresentations();
    presented->_lastTransition = PresentationTransition::None;
    presented->_shownBy.reset();
    presentation->leave(PresentationTransition::None, 1, false, {});
}

std::shared_ptr<TransitionCoordinator> ViewController::transitionCoordinator() const {
    for (const auto* controller = this; controller; controller = controller->_parent)
        if (auto coordinator = controller->_transitionCoordinator.lock()) return coordinator;
    return nullptr;
}

void ViewController::setTransitionCoordinator(std::shared_ptr<TransitionCoordinator> coordinator) {
    _transitionCoordinator = coordinator;
}

// Focus

std::shared_ptr<View> ViewController::preferredFocusedItem() {
    for (const auto& child : std::vector(_children))
        if (auto item = child->preferredFocusedItem()) return item;
    return nullptr;
}

void ViewController::setNeedsFocusUpdate() {
    Window* const window = _view ? _view->window() : nullptr;
    if (window && window->topPresentedViewController().get() == outermostViewController())
        window->focusSystem().reset();
}

std::shared_ptr<ViewController> ViewController::contentViewController() { return strong(this); }

}  // namespace zornic
