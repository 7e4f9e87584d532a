#include "Platform/Toolkit/Window.h"

#include <algorithm>

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/TabBarController.h"
#include "Platform/Toolkit/WindowTouches.h"

namespace zornic {

namespace {

/** Layout that wants layout again is repeated this often a frame. */
constexpr int maxLayoutPasses = 4;

std::vector<Window*>& allWindows() {
    static std::vector<Window*> windows;
    return windows;
}

void setTreeNeedsLayout(View& view) {
    view.setNeedsLayout();
    for (const auto& subview : view.subviews()) setTreeNeedsLayout(*subview);
}

}  // namespace

Window::Window(const Rect& frame)
    : View(frame), _damage(bounds()), _touches(std::make_unique<WindowTouches>()) {
    allWindows().push_back(this);
}

void Window::didMake() {
    View::didMake();
    setBackgroundColor(_externalSystemBarBackgroundColor());
    setHidden(true);
    setWindow(this);
}

Window::~Window() { std::erase(allWindows(), this); }

std::shared_ptr<Window> Window::onScreen(const Screen& screen) {
    for (auto* const window : allWindows())
        if (window->_screen.get() == &screen && window->isShown()) return strong(window);
    return nullptr;
}

// Screen and root

void Window::setScreen(std::shared_ptr<Screen> screen) {
    if (screen == _screen) return;
    const auto self = strong(this);
    const bool wasShown = isShown();
    _screen = std::move(screen);
    screenDidChange();
    updateAppearance(wasShown);
}

void Window::setWindowHidden(bool hidden) {
    if (hidden == isHidden()) return;
    const auto self = strong(this);
    const bool wasShown = isShown();
    setHidden(hidden);
    updateAppearance(wasShown);
}

void Window::setRootViewController(std::shared_ptr<ViewController> controller) {
    if (controller == _root) return;
    const auto self = strong(this);
    touchCancel();
    if (const auto old = _root) {
        for (auto front = topPresentedViewController(); front && front != old;
             front = topPresentedViewController()) {
            front->dismissViewController(false);
            if (front == topPresentedViewController()) break;
        }
        old->beginAppearanceTransition(false, false);
        if (old->isViewLoaded()) old->view()->removeFromSuperview();
        old->endAppearanceTransition();
    }
    _root = std::move(controller);
    updateAppearance(false);
}

/** A root screen comes into the window when it is first visible; what a full screen covers does not appear.
 */
void Window::updateAppearance(bool wasShown) {
    if (isShown() && _root && _root->view()->superview() != this) {
        _root->view()->setFrame(bounds());
        _root->view()->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleHeight);
        insertSubview(_root->view(), 0);
        for (auto over = _root->presentedViewController(); over; over = over->presentedViewController())
            addPresentedView(over->view());  // presented before there was a window to be seen in
    }
    auto changing = controllers();
    if (isShown() && !wasShown) {
        const auto covering =
            std::find_if(changing.rbegin(), changing.rend(), [this](const auto& controller) {
                return controller == _root ||
                       controller->presentationStyle() == PresentationStyle::FullScreen;
            });
        if (covering != changing.rend()) changing.erase(changing.begin(), covering.base() - 1);
    }
    if (isShown() == wasShown && wasShown) return;
    for (const auto& controller : changing) {
        controller->beginAppearanceTransition(isShown(), false);
        controller->endAppearanceTransition();
    }
    if (!isShown()) touchCancel();
    _focus.update();
    if (isShown()) addDamage(bounds());
}

std::vector<std::shared_ptr<ViewController>> Window::controllers() const {
    std::vector<std::shared_ptr<ViewController>> all;
    if (_root) all.push_back(_root);
    for (const auto& view : subviews()) {
        const auto controller = strong(view->viewController());
        if (controller && controller != _root && controller->presentingViewController())
            all.push_back(controller);
    }
    return all;
}

std::shared_ptr<ViewController> Window::topPresentedViewController() const {
    const auto all = controllers();
    return all.empty() ? nullptr : all.back();
}

void Window::addPresentedView(const std::shared_ptr<View>& view) {
    touchCancel();  // it was meant for what is covered now
    view->setFrame(bounds());
    view->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleHeight);
    addSubview(view);
}

void Window::screenDidChange() {
    const auto self = strong(this);
    touchCancel();
    if (_screen) {
        setFrame(_screen->bounds());
        _damage = DamageRegion(bounds());
    }
    for (const auto& controller : controllers())
        if (controller->isViewLoaded() && controller->view()->superview() == this)
            controller->view()->setFrame(bounds());
    setTreeNeedsLayout(*this);
    const std::int64_t models = _screen ? _screen->integerCapability(ScreenCapability::InteractionModels) : 0;
    _focus.setEnabled((models & InteractionModel::Knob) != 0);
    addDamage(bounds());
}

// The driver

Touch Window::touchAt(Point location) const {
    return {location, RunLoop::hasMain() ? RunLoop::main().now() : TimePoint{}};
}

bool Window::hasTouch() const { return _touches->isActive(); }

void Window::touchDown(Point location) {
    const auto self = strong(this);
    touchCancel();
    if (!isShown()) return;
    const auto front = topPresentedViewController();
    const auto hit = front ? front->view()->hitTest(front->view()->convertFromWindow(location)) : nullptr;
    _touches->down(hit, touchAt(location));
}

void Window::touchMove(Point location) {
    const auto self = strong(this);
    if (hasTouch()) _touches->move(touchAt(location));
}

void Window::touchUp(Point location) {
    const auto self = strong(this);
    if (hasTouch()) _touches->up(touchAt(location));
}

void Window::touchCancel() {
    const auto self = strong(this);
    _touches->cancel(touchAt({}).time);
}

void Window::turnKnob(int detents) {
    const auto self = strong(this);
    if (isShown()) _focus.turn(detents);
}

void Window::pressKnob(bool down) {
    const auto self = strong(this);
    if (!down)
        _focus.pressEnded(!isShown());
    else if (isShown())
        _focus.pressBegan();
}

bool Window::pressBack() {
    const auto self = strong(this);
    const auto front = topPresentedViewController();
    if (!front || !isShown()) return false;
    if (front->handleBack()) return true;
    if (front == _root) return focusSelectedTab();
    front->dismissViewController(true);
    return true;
}

/** From a tab's content back to the tabs, the last step that a knob can go back. */
bool Window::focusSelectedTab() {
    const auto content = _root->contentViewController();
    auto* const container = content ? content->tabBarController() : nullptr;
    const auto focused = _focus.focusedItem();
    if (!container || !focused || focused->isDescendantOf(*container->tabBar())) return false;
    const auto selected = container->tabBar()->selectedIndex();
    if (!selected) return false;
    _focus.focus(container->tabBar()->buttons()[*selected]);
    return true;
}

// Drawing

std::vector<Rect> Window::takeDamage() {
    const auto self = strong(this);
    _frameAnnounced = true;  // what layout changes belongs to this frame
    for (int pass = 0; pass < maxLayoutPasses; ++pass) {
        _layoutWanted = false;
        layoutIfNeeded();
        _focus.update();
        if (!_layoutWanted) break;
    }
    _frameAnnounced = false;
    auto damage = _damage.take();
    if (_layoutWanted) wantFrame();
    return damage;
}

void Window::render(Canvas& canvas) { layer()->render(canvas); }

void Window::addDamage(const Rect& area) {
    _damage.add(area);
    if (!_damage.empty()) wantFrame();
}

void Window::setLayoutWanted() {
    _layoutWanted = true;
    wantFrame();
}

void Window::wantFrame() {
    if (_frameAnnounced || !isShown()) return;
    _frameAnnounced = true;
    if (const auto wanted = onFrameWanted) wanted();
}

}  // namespace zornic
