#include "Platform/Toolkit/FocusSystem.h"

#include <algorithm>
#include <cmath>

#include "Platform/Toolkit/Window.h"

namespace zornic {

namespace {

/** Items whose centres differ by no more than this stand in one row. */
constexpr double rowTolerance = 20;

FocusContainer* asContainer(const std::shared_ptr<View>& view) {
    return dynamic_cast<FocusContainer*>(view.get());
}

std::shared_ptr<View> containerAround(const View& view) {
    for (View* above = view.superview(); above; above = above->superview())
        if (dynamic_cast<FocusContainer*>(above)) return strong(above);
    return nullptr;
}

bool isVisible(const View& view) {
    return !view.isHidden() && view.alpha() > 0 && view.isUserInteractionEnabled();
}

bool isAncestor(const ViewController& ancestor, const ViewController& of) {
    for (const auto* controller = &of; controller; controller = controller->parentViewController())
        if (controller == &ancestor) return true;
    return false;
}

/** Whether a screen is part of what stands in front: not one that is sliding out of a stack. */
bool belongsTo(const ViewController& content, const ViewController* screen) {
    return !screen || isAncestor(*screen, content) || isAncestor(content, *screen);
}

void collectStops(const std::shared_ptr<View>& view, const Rect& window, const ViewController& content,
                  std::vector<std::shared_ptr<View>>& stops) {
    if (!isVisible(*view) || !belongsTo(content, view->viewController())) return;
    if (asContainer(view) || view->canBecomeFocused()) {
        if (view->convertToWindow(view->bounds()).intersects(window)) stops.push_back(view);
        return;
    }
    for (const auto& subview : view->subviews()) collectStops(subview, window, content, stops);
}

/** Rows from top to bottom, each from left to right. */
void sortAsRead(std::vector<std::shared_ptr<View>>& stops) {
    const auto center = [](const auto& stop) { return stop->convertToWindow(stop->bounds()).center(); };
    std::stable_sort(stops.begin(), stops.end(),
                     [&](const auto& one, const auto& other) { return center(one).y < center(other).y; });
    for (auto row = stops.begin(); row != stops.end();) {
        const double top = center(*row).y;
        const auto end = std::find_if(row, stops.end(),
                                      [&](const auto& stop) { return center(stop).y > top + rowTolerance; });
        std::stable_sort(row, end,
                         [&](const auto& one, const auto& other) { return center(one).x < center(other).x; });
        row = end;
    }
}

}  // namespace

void FocusSystem::setEnabled(bool enabled) {
    if (enabled == _enabled) return;
    _enabled = enabled;
    if (enabled) {
        update();
    } else {
        pressEnded(true);
        moveTo(nullptr);
    }
}

void FocusSystem::focus(const std::shared_ptr<View>& view) {
    if (_enabled && isUsable(view)) moveTo(view);
}

void FocusSystem::moveTo(const std::shared_ptr<View>& item) {
    const auto old = _focused.lock();
    const auto next = item;
    if (old != next) {
        if (_pressed.lock() != next) pressEnded(true);
        _focused = next;
        if (old) old->setFocused(false);
    }
    _container = next ? containerAround(*next) : nullptr;
    if (!next) return;
    if (!next->isFocused()) next->setFocused(true);
    remember();
}

// Where focus can go

std::shared_ptr<ViewController> FocusSystem::frontController() const {
    auto front = _window.topPresentedViewController();
    return !_window.isHidden() && front && front->isViewLoaded() ? front : nullptr;
}

bool FocusSystem::isShown(const View& view) const {
    const auto front = frontController();
    if (!front || view.window() != &_window || !view.isDescendantOf(*front->view())) return false;
    const auto content = front->contentViewController();
    for (const View* above = &view; above; above = above->superview())
        if (!isVisible(*above) || !belongsTo(*content, above->viewController())) return false;
    return true;
}

bool FocusSystem::isUsable(const std::shared_ptr<View>& item) const {
    return item && !item->frame().empty() && item->canBecomeFocused() && isShown(*item);
}

std::vector<std::shared_ptr<View>> FocusSystem::stops() const {
    std::vector<std::shared_ptr<View>> found;
    if (const auto front = frontController())
        collectStops(front->view(), _window.bounds(), *front->contentViewController(), found);
    sortAsRead(found);
    return found;
}

std::shared_ptr<View> FocusSystem::itemIn(const std::shared_ptr<View>& target, int direction) const {
    if (!target || !isShown(*target)) return nullptr;
    if (auto* const container = asContainer(target)) {
        auto item = container->focusItemOnEntry(direction);
        return isUsable(item) ? item : nullptr;
    }
    if (isUsable(target)) return target;
    for (const auto& stop : stops())
        if (stop != target && stop->isDescendantOf(*target))
            if (auto item = itemIn(stop, direction)) return item;
    return nullptr;
}

std::shared_ptr<View> FocusSystem::itemBeyond(const View& from, int direction) const {
    auto ordered = stops();
    if (direction < 0) std::reverse(ordered.begin(), ordered.end());
    auto at =
        std::find_if(ordered.begin(), ordered.end(), [&](const auto& stop) { return stop.get() == &from; });
    if (at == ordered.end()) return nullptr;
    for (++at; at != ordered.end(); ++at)
        if (auto item = itemIn(*at, direction)) return item;  // an empty list is passed over
    return nullptr;
}

// Moving

void FocusSystem::turn(int detents) {
    const auto window = strong(&_window);
    if (!_enabled) return;
    const bool hadFocus = isUsable(_focused.lock());
    update();
    if (!hadFocus) return;  // the first detent only shows where the focus is
    const int direction = detents < 0 ? -1 : 1;
    for (; detents != 0 && step(direction); detents -= direction) {
    }
}

bool FocusSystem::step(int direction) {
    const auto focused = _focused.lock();
    if (!focused) return false;
    const auto list = _container.lock();
    auto* const container = asContainer(list);
    std::shared_ptr<View> next;
    if (container) {
        next = container->focusItemNextTo(*focused, direction);
        if (!next) next = itemBeyond(*list, direction);
        if (!next || !container->shouldChangeFocus(*focused, next)) return false;
    } else {
        next = itemBeyond(*focused, direction);
    }
    if (!isUsable(next) || next == focused) return false;
    moveTo(next);
    return true;
}

void FocusSystem::pressBegan() {
    if (!_enabled) return;
    update();
    const auto focused = _focused.lock();
    _pressed = focused;
    if (focused) focused->knobPressBegan();
}

void FocusSystem::pressEnded(bool cancelled) {
    const auto pressed = _pressed.lock();
    _pressed.reset();
    if (pressed) pressed->knobPressEnded(cancelled || !isUsable(pressed));
}

// Finding

void FocusSystem::update() {
    if (!_enabled || _updating) return;
    _updating = true;
    _window.layoutIfNeeded();  // what can be focused has its place only then
    if (!isUsable(_focused.lock())) {
        std::shared_ptr<View> found;
        const auto list = _container.lock();
        if (list && isShown(*list)) found = asContainer(list)->focusItemAfterReload();
        if (!isUsable(found)) found = rememberedItem();
        if (!found) found = preferredItem();
        if (!found) found = firstItem();
        moveTo(found);
    }
    _updating = false;
}

void FocusSystem::reset() {
    if (!_enabled) return;
    _window.layoutIfNeeded();
    auto found = preferredItem();
    if (!found) found = firstItem();
    moveTo(found);
}

void FocusSystem::frontScreenDidChange() {
    if (!_enabled) return;
    _window.layoutIfNeeded();
    auto found = rememberedItem();
    if (!found) found = preferredItem();
    if (!found) found = firstItem();
    moveTo(found);
}

std::shared_ptr<View> FocusSystem::preferredItem() const {
    const auto front = frontController();
    const auto content = front ? front->contentViewController() : nullptr;
    for (auto controller = content; controller; controller = strong(controller->parentViewController()))
        if (auto item = itemIn(controller->preferredFocusedItem(), 0)) return item;
    return nullptr;
}

std::shared_ptr<View> FocusSystem::firstItem() const {
    for (const auto& stop : stops())
        if (auto item = itemIn(stop, 0)) return item;
    return nullptr;
}

std::shared_ptr<View> FocusSystem::rememberedItem() const {
    const auto front = frontController();
    const auto content = front ? front->contentViewController() : nullptr;
    if (!content || !content->isViewLoaded()) return nullptr;
    for (const auto& [screen, stop] : _memory)
        if (screen.lock() == content->view()) return itemIn(stop.lock(), 0);
    return nullptr;
}

void FocusSystem::remember() {
    std::erase_if(_memory, [](const auto& entry) { return entry.first.expired() || entry.second.expired(); });
    const auto front = frontController();
    const auto content = front ? front->contentViewController() : nullptr;
    if (!content || !content->isViewLoaded()) return;
    const auto list = _container.lock();
    const std::weak_ptr<View> stop = list ? list : _focused.lock();
    const auto known = std::find_if(_memory.begin(), _memory.end(),
                                    [&](const auto& entry) { return entry.first.lock() == content->view(); });
    if (known != _memory.end())
        known->second = stop;
    else
        _memory.emplace_back(content->view(), stop);
}

}  // namespace zornic
