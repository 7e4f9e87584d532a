#include "Platform/Toolkit/TabBarController.h"

#include <algorithm>

#include "Platform/Toolkit/MoreListController.h"

namespace zornic {

namespace {

using Screens = std::vector<std::shared_ptr<ViewController>>;

bool contains(const Screens& screens, const std::shared_ptr<ViewController>& screen) {
    return std::find(screens.begin(), screens.end(), screen) != screens.end();
}

TabBarItem tabOf(const ViewController& screen) {
    return screen.tabBarItem().value_or(TabBarItem{screen.title(), {}, {}});
}

}  // namespace

void TabBarController::didMake() {
    ViewController::didMake();
    _more = make<NavigationController>(make<MoreListController>(weak(this)));
    _more->setTitle(moreListController()->title());
    _more->setNavigationBarHidden(true, false);
    addChildViewController(_more);
    _more->didMoveToParentViewController(this);
}

TabBarController::~TabBarController() {
    if (_tabBar) _tabBar->onPick = nullptr;
}

// Screens

void TabBarController::setViewControllers(std::vector<std::shared_ptr<ViewController>> screens) {
    const auto self = strong(this);
    auto selected = selectedViewController();
    _screens = std::move(screens);
    if (selected && selected != _more && !contains(_screens, selected) && !selected->identifier().empty()) {
        const auto same = std::find_if(_screens.begin(), _screens.end(), [&](const auto& screen) {
            return screen && screen->identifier() == selected->identifier();
        });
        if (same != _screens.end()) selected = *same;
    }
    updateTabs(selected);
}

void TabBarController::setCustomizableViewControllers(std::vector<std::shared_ptr<ViewController>> screens) {
    _customizable = std::move(screens);
}

std::shared_ptr<ViewController> TabBarController::moreListController() const {
    return _more->viewControllers().front();
}

std::shared_ptr<ViewController> TabBarController::selectedViewController() const {
    if (_shown != _more) return _shown;
    const auto& stack = _more->viewControllers();
    return stack.size() > 1 ? stack[1] : _shown;
}

void TabBarController::setSelectedViewController(const std::shared_ptr<ViewController>& screen) {
    const auto self = strong(this);
    if (isShowable(screen)) select(screen);
}

bool TabBarController::isShowable(const std::shared_ptr<ViewController>& screen) const {
    if (screen == _more) return !_overflow.empty();
    return screen && (contains(_direct, screen) || contains(_overflow, screen));
}

void TabBarController::tabBarItemDidChange() { updateTabs(selectedViewController()); }

void TabBarController::updateTabs(const std::shared_ptr<ViewController>& selected) {
    if (_updating) return;  // a screen that comes or goes changed something: this pass ends with it
    const auto self = strong(this);
    _updating = true;
    distribute();
    updateChildren();
    updateBarItems();
    _updating = false;
    if (isShowable(selected))
        select(selected);
    else
        select(!_direct.empty() ? _direct.front() : !_overflow.empty() ? _more : nullptr);
}

void TabBarController::distribute() {
    Screens distinct;
    for (const auto& screen : _screens)
        if (screen && screen != _more && !contains(distinct, screen)) distinct.push_back(screen);
    const std::size_t capacity = tabBar()->capacity();
    const std::size_t tabs = distinct.size() <= capacity ? distinct.size() : capacity - 1;
    const auto cut = distinct.begin() + static_cast<std::ptrdiff_t>(tabs);
    _direct.assign(distinct.begin(), cut);
    Screens overflow(cut, distinct.end());
    if (overflow == _overflow) return;
    _overflow = std::move(overflow);
    if (const auto list = std::dynamic_pointer_cast<MoreListController>(moreListController())) list->reload();
}

/** Screens with tabs are its own children; one under More is the More stack's while it is pushed there. */
void TabBarController::updateChildren() {
    const auto& stack = _more->viewControllers();
    if (stack.size() > 1 && !contains(_overflow, stack[1])) {
        if (_shown == _more && _overflow.empty()) show(nullptr);
        _more->popToViewController(moreListController(), false);
    }
    for (const auto& child : Screens(childViewControllers())) {
        if (child == _more || contains(_direct, child)) continue;
        if (child == _shown) show(nullptr);
        child->willMoveToParentViewController(nullptr);
        child->removeFromParentViewController();
    }
    for (const auto& screen : Screens(_direct)) {
        if (screen->parentViewController() == this) continue;
        addChildViewController(screen);
        screen->didMoveToParentViewController(this);
    }
}

void TabBarController::updateBarItems() {
    std::vector<TabBarItem> items;
    for (const auto& screen : _direct) items.push_back(tabOf(*screen));
    if (!_overflow.empty()) items.push_back(tabOf(*_more));
    tabBar()->setItems(items);
}

void TabBarController::select(const std::shared_ptr<ViewController>& screen) {
    const bool underMore = contains(_overflow, screen);
    if (underMore) {
        const auto& stack = _more->viewControllers();
        if (stack.size() < 2 || stack[1] != screen) {
            _more->popToViewController(moreListController(), false);
            _more->pushViewController(screen, false);
            _more->setNavigationBarHidden(false, false);
        }
    }
    show(underMore ? _more : screen);
    const auto at = std::find(_direct.begin(), _direct.end(), _shown);
    tabBar()->setSelectedIndex(_shown ? std::optional(static_cast<std::size_t>(at - _direct.begin()))
                                      : std::nullopt);
}

void TabBarController::show(const std::shared_ptr<ViewController>& screen) {
    if (screen == _shown) return;
    const auto self = strong(this);
    const auto old = std::exchange(_shown, screen);
    if (old) {
        old->beginAppearanceTransition(false, false);
        if (old->isViewLoaded()) old->view()->removeFromSuperview();
        old->endAppearanceTransition();
    }
    if (!screen || _shown != screen) return;
    placeShown();
    if (!isOnView()) return;
    screen->beginAppearanceTransition(true, false);
    if (hasAppeared() && _shown == screen) screen->endAppearanceTransition();
}

// The driver

void TabBarController::pick(std::size_t index) {
    const auto self = strong(this);
    if (index < _direct.size()) {
        const auto screen = _direct[index];
        select(screen);
        tellPicked(screen);
    } else if (!_overflow.empty()) {
        if (_shown == _more)
            _more->popToViewController(moreListController(), true);
        else
            select(_more);
        tellPicked(_more);
    }
}

void TabBarController::pickUnderMore(const std::shared_ptr<ViewController>& screen) {
    const auto self = strong(this);
    if (!contains(_overflow, screen)) return;
    _more->pushViewController(screen, true);
    tellPicked(screen);
}

void TabBarController::tellPicked(const std::shared_ptr<ViewController>& screen) {
    if (const auto delegate = _delegate.lock())
        delegate->tabBarControllerDidSelectViewController(*this, screen);
    const auto content = screen == _more ? _more->topViewController() : screen;
    if (isViewLoaded()) view()->layoutIfNeeded();  // rows to take the focus exist only then
    content->_viewControllerWasSelected();
}

// View

const std::shared_ptr<TabBar>& TabBarController::tabBar() {
    if (!_tabBar) {
        _tabBar = make<TabBar>();
        _tabBar->onPick = [this](std::size_t index) { pick(index); };
    }
    return _tabBar;
}

void TabBarController::setAccessoryView(std::shared_ptr<View> view) {
    if (view == _accessoryView) return;
    _accessoryView = std::move(view);
    tabBar()->setAccessoryView(_accessoryView);
    updateTabs(selectedViewController());
}

Value TabBarController::valueForKey(const std::string&) const { return {}; }

std::optional<std::vector<std::string>> TabBarController::textsForKey(const std::string&) const {
    return std::nullopt;
}

void TabBarController::loadView() {
    ViewController::loadView();
    _contentView = make<View>();
    view()->addSubview(_contentView);
    view()->addSubview(tabBar());
    placeShown();
}

void TabBarController::viewDidLayoutSubviews() {
    ViewController::viewDidLayoutSubviews();
    if (!_contentView) return;
    const Rect bounds = view()->bounds();
    tabBar()->setFrame({0, 0, bounds.width(), TabBar::height});
    _contentView->setFrame(
        {0, TabBar::height, bounds.width(), std::max(0.0, bounds.height() - TabBar::height)});
    updateTabs(selectedViewController());  // another width has room for another number of tabs
    placeShown();
}

void TabBarController::placeShown() {
    if (!_contentView || !_shown) return;
    const auto& shown = _shown->view();
    if (shown->superview() != _contentView.get()) _contentView->addSubview(shown);
    shown->setFrame({{0, 0}, _contentView->frame().size});
}

// Appearance

void TabBarController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    if (const auto shown = _shown) shown->beginAppearanceTransition(true, animated);
}

void TabBarController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    if (const auto shown = _shown) shown->endAppearanceTransition();
}

void TabBarController::viewWillDisappear(bool animated) {
    ViewController::viewWillDisappear(animated);
    if (const auto shown = _shown) shown->beginAppearanceTransition(false, animated);
}

void TabBarController::viewDidDisappear(bool animated) {
    ViewController::viewDidDisappear(animated);
    if (const auto shown = _shown) shown->endAppearanceTransition();
}

std::shared_ptr<View> TabBarController::preferredFocusedItem() {
    if (_shown)
        if (auto item = _shown->preferredFocusedItem()) return item;
    const auto selected = tabBar()->selectedIndex();
    return selected ? tabBar()->buttons()[*selected] : nullptr;
}

std::shared_ptr<ViewController> TabBarController::contentViewController() {
    return _shown ? _shown->contentViewController() : ViewController::contentViewController();
}

bool TabBarController::handleBack() { return _shown && _shown->handleBack(); }

}  // namespace zornic
