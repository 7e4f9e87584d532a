#include "Platform/Toolkit/View.h"

#include <algorithm>
#include <cassert>

#include "Platform/Toolkit/Control.h"
#include "Platform/Toolkit/GestureRecognizer.h"
#include "Platform/Toolkit/Screen.h"
#include "Platform/Toolkit/ViewController.h"
#include "Platform/Toolkit/Window.h"

namespace zornic {

namespace {

/** Layout that marks itself again is repeated this often; what then is still marked waits for the next frame.
 */
constexpr int maxLayoutPasses = 4;

/** One axis of a view inside its parent: margin, length, margin, of which some are flexible. */
struct Span {
    double before, length, after;
    bool flexibleBefore, flexibleLength, flexibleAfter;

    /** The parent grew by `delta`: flexible parts share it in proportion, evenly where they have no length.
     */
    void grow(double delta) {
        const int count = flexibleBefore + flexibleLength + flexibleAfter;
        if (count == 0 || delta == 0) return;
        const double sum = flexibleBefore * before + flexibleLength * length + flexibleAfter * after;
        const auto share = [&](double part) {
            return sum > 0 && count > 1 ? delta * part / sum : delta / count;
        };
        const double lengthShare = share(length);
        if (flexibleBefore) before += share(before);
        if (flexibleLength) length += lengthShare;
    }
};

}  // namespace

View::View(const Rect& frame) : _layer(make<Layer>(this)) { _layer->setFrame(frame); }

View::~View() {
    _layer->setOwner(nullptr);
    _layer->removeFromSuperlayer();
    for (const auto& recognizer : _recognizers)
        if (recognizer->view() == this) recognizer->setView(nullptr);
    std::vector<std::shared_ptr<View>> survivors;
    for (const auto& subview : std::exchange(_subviews, {})) {
        subview->_superview = nullptr;
        subview->_layer->removeFromSuperlayer();
        subview->assignWindow(nullptr, survivors);
    }
    for (const auto& view : survivors) view->didMoveToWindow();
}

void View::didMake() {}

// Geometry

void View::setFrame(const Rect& frame) {
    const Size oldSize = _layer->frame().size;
    _layer->setFrame(frame);
    if (frame.size == oldSize) return;
    resizeSubviews(oldSize);
    setNeedsLayout();
}

void View::setBounds(const Rect& bounds) {
    _layer->setBoundsOrigin(bounds.origin);
    if (bounds.size != frame().size) setFrame({frame().origin, bounds.size});
}

void View::resizeSubviews(Size oldSize) {
    for (const auto& subview : std::vector(_subviews))
        if (subview->_translatesAutoresizing) subview->resizeByMask(oldSize, frame().size);
}

void View::resizeByMask(Size oldParent, Size newParent) {
    if (_autoresizingMask == Autoresizing::None) return;
    const auto has = [this](unsigned flag) { return (_autoresizingMask & flag) != 0; };
    const Rect old = frame();
    Span across{old.x(),
                old.width(),
                oldParent.width - old.maxX(),
                has(Autoresizing::FlexibleLeftMargin),
                has(Autoresizing::FlexibleWidth),
                has(Autoresizing::FlexibleRightMargin)};
    Span down{old.y(),
              old.height(),
              oldParent.height - old.maxY(),
              has(Autoresizing::FlexibleTopMargin),
              has(Autoresizing::FlexibleHeight),
              has(Autoresizing::FlexibleBottomMargin)};
    across.grow(newParent.width - oldParent.width);
    down.grow(newParent.height - oldParent.height);
    setFrame({across.before, down.before, across.length, down.length});
}

void View::addConstraint(LayoutConstraint constraint) {
    _constraints.push_back(std::move(constraint));
    setNeedsLayout();
}

void View::addConstraints(const std::vector<LayoutConstraint>& constraints) {
    for (const auto& constraint : constraints) addConstraint(constraint);
}

void View::attachEdges(View& other, unsigned edges, const EdgeInsets& insets) {
    struct Edge {
        unsigned bit;
        LayoutAttribute attribute;
        double constant;
    };
    const Edge all[] = {{1, LayoutAttribute::Top, insets.top},
                        {2, LayoutAttribute::Left, insets.left},
                        {4, LayoutAttribute::Bottom, -insets.bottom},
                        {8, LayoutAttribute::Right, -insets.right}};
    setTranslatesAutoresizingMaskIntoConstraints(false);
    for (const Edge& edge : all)
        if (edges & edge.bit)
            other.addConstraint({weak(this), edge.attribute, weak(&other), edge.attribute, 1, edge.constant});
}

Size View::sizeThatFits(Size) { return frame().size; }

void View::sizeToFit() { setFrame({frame().origin, sizeThatFits(frame().size)}); }

Point View::convertToWindow(Point point) const {
    for (const View* view = this; view->_superview; view = view->_superview)
        point = point - view->bounds().origin + view->frame().origin;
    return point;
}

Point View::convertFromWindow(Point point) const { return point - convertToWindow(Point{}); }
Rect View::convertToWindow(const Rect& rect) const { return {convertToWindow(rect.origin), rect.size}; }
Rect View::convertFromWindow(const Rect& rect) const { return {convertFromWindow(rect.origin), rect.size}; }

// Tree

void View::addSubview(const std::shared_ptr<View>& view) { insertSubview(view, _subviews.size()); }

void View::insertSubviewBelow(const std::shared_ptr<View>& view, const View& sibling) {
    const auto at = std::find_if(_subviews.begin(), _subviews.end(),
                                 [&](const auto& subview) { return subview.get() == &sibling; });
    auto index = static_cast<std::size_t>(at - _subviews.begin());
    const auto own = std::find(_subviews.begin(), at, view);
    if (own != at) --index;  // it leaves a gap below the sibling
    insertSubview(view, index);
}

void View::bringSubviewToFront(const std::shared_ptr<View>& view) {
    if (view && view->_superview == this) addSubview(view);
}

void View::insertSubview(const std::shared_ptr<View>& view, std::size_t index) {
    assert(view && !isDescendantOf(*view));
    const auto kept = view;
    const bool moved = kept->_superview != this;
    const Color oldTint = kept->tintColor();
    if (moved)
        kept->detachFromSuperview();
    else
        _subviews.erase(std::find(_subviews.begin(), _subviews.end(), kept));
    index = std::min(index, _subviews.size());
    _subviews.insert(_subviews.begin() + static_cast<std::ptrdiff_t>(index), kept);
    kept->_superview = this;
    placeLayer(kept, index);
    if (!moved) return;
    if (kept->_needsLayout || kept->_descendantNeedsLayout) kept->setNeedsLayout();
    subviewsDidChange();
    kept->setWindow(_window);
    kept->didMoveToSuperview();
    if (kept->tintColor() != oldTint) kept->tellTintColorChange();
}

/** Below the layer of the subview above it, if that is here; on top otherwise. */
void View::placeLayer(const std::shared_ptr<View>& view, std::size_t index) {
    const auto& layers = _layer->sublayers();
    const auto last = layers.end();
    const auto above =
        index + 1 < _subviews.size() ? std::find(layers.begin(), last, _subviews[index + 1]->_layer) : last;
    if (above == last) {
        _layer->addSublayer(view->_layer);
        return;
    }
    const bool leavesGap = std::find(layers.begin(), above, view->_layer) != above;
    _layer->insertSublayer(view->_layer, static_cast<std::size_t>(above - layers.begin()) - leavesGap);
}

void View::detachFromSuperview() {
    View* const parent = _superview;
    if (!parent) return;
    _layer->removeFromSuperlayer();
    _superview = nullptr;
    std::erase_if(parent->_subviews, [this](const auto& subview) { return subview.get() == this; });
    parent->subviewsDidChange();
}

void View::removeFromSuperview() {
    if (!_superview) return;
    const auto self = strong(this);
    if (_window) {
        const auto responder = _window->firstResponder();
        if (responder && responder->isDescendantOf(*this)) _window->setFirstResponder(nullptr);
    }
    const Color oldTint = tintColor();
    detachFromSuperview();
    setWindow(nullptr);
    didMoveToSuperview();
    if (tintColor() != oldTint) tellTintColorChange();
}

bool View::isDescendantOf(const View& view) const {
    for (const View* ancestor = this; ancestor; ancestor = ancestor->_superview)
        if (ancestor == &view) return true;
    return false;
}

void View::setWindow(Window* window) {
    std::vector<std::shared_ptr<View>> changed;
    assignWindow(window, changed);
    for (const auto& view : changed)
        if (view->_window == window) view->didMoveToWindow();
}

/** The whole tree first, so that whoever hears of it finds it consistent. */
void View::assignWindow(Window* window, std::vector<std::shared_ptr<View>>& changed) {
    if (_window == window) return;
    _window = window;
    if (auto self = strong(this)) changed.push_back(std::move(self));
    if (window && (_needsLayout || _descendantNeedsLayout)) window->setLayoutWanted();
    for (const auto& subview : _subviews) subview->assignWindow(window, changed);
}

std::shared_ptr<View> View::viewWithTag(int tag) {
    if (_tag == tag) return strong(this);
    for (const auto& subview : _subviews)
        if (auto found = subview->viewWithTag(tag)) return found;
    return nullptr;
}

// Look

Color View::tintColor() const {
    for (const View* view = this; view; view = view->_superview)
        if (view->_tintColor) return *view->_tintColor;
    return _externalSystemTealColor();
}

void View::setTintColor(std::optional<Color> color) {
    if (color == _tintColor) return;
    const Color old = tintColor();
    _tintColor = color;
    if (tintColor() == old) return;
    tintColorDidChange();
    for (const auto& subview : std::vector(_subviews)) subview->tellTintColorChange();
}

void View::tellTintColorChange() {
    if (_tintColor) return;
    tintColorDidChange();
    for (const auto& subview : std::vector(_subviews)) subview->tellTintColorChange();
}

void View::setContentMode(ContentMode mode) {
    if (mode == _contentMode) return;
    _contentMode = mode;
    setNeedsDisplay();
}

double View::displayScale() const {
    const auto screen = _window ? _window->screen() : nullptr;
    return screen ? screen->scale() : 1;
}

void View::drawLayer(Canvas& canvas, const Rect& dirty) { drawRect(canvas, dirty); }

void View::layerDidChange(const Rect& area) {
    if (_window && static_cast<View*>(_window) == this)
        _window->addDamage(area);
    else
        _layer->tellSuperlayer(area);
}

// Layout

void View::setNeedsLayout() {
    _needsLayout = true;
    for (View* above = _superview; above; above = above->_superview) above->_descendantNeedsLayout = true;
    if (_window) _window->setLayoutWanted();
}

void View::subviewsDidChange() {
    if (!_inLayout) setNeedsLayout();
}

void View::layoutIfNeeded() {
    const auto self = strong(this);
    for (int pass = 0; pass < maxLayoutPasses && (_needsLayout || _descendantNeedsLayout); ++pass)
        layoutPass();
}

void View::layoutPass() {
    if (std::exchange(_needsLayout, false)) layoutOwn();
    _descendantNeedsLayout = false;
    for (const auto& subview : std::vector(_subviews))
        if (subview->_superview == this && (subview->_needsLayout || subview->_descendantNeedsLayout))
            subview->layoutPass();
}

void View::layoutOwn() {
    const auto controller = strong(_viewController);
    if (controller) controller->viewWillLayoutSubviews();
    _inLayout = true;
    if (!_constraints.empty()) solveConstraints(*this, _constraints);
    layoutSubviews();
    _inLayout = false;
    if (controller) controller->viewDidLayoutSubviews();
}

void View::layoutSubviews() {}

// Touch

bool View::pointInside(Point point) const { return bounds().contains(point); }

std::shared_ptr<View> View::hitTest(Point point) {
    if (isHidden() || alpha() < 0.01 || !_userInteractionEnabled) return nullptr;
    const bool inside = pointInside(point);
    if (!inside && clipsToBounds()) return nullptr;
    std::shared_ptr<View>
        nearMiss;  // small controls are hit around their bounds, but not through a neighbour
    for (auto at = _subviews.rbegin(); at != _subviews.rend(); ++at) {
        const auto hit = (*at)->hitTest(point - (*at)->frame().origin + (*at)->bounds().origin);
        if (!hit) continue;
        if (hit->bounds().contains(hit->convertFromWindow(convertToWindow(point))))
            return nearMiss && !dynamic_cast<const Control*>(hit.get()) ? nearMiss : hit;
        if (!nearMiss) nearMiss = hit;
    }
    if (nearMiss) return nearMiss;
    return inside ? strong(this) : nullptr;
}

void View::touchBegan(const Touch& touch) {
    if (const auto parent = strong(_superview)) parent->touchBegan(touch);
}
void View::touchMoved(const Touch& touch) {
    if (const auto parent = strong(_superview)) parent->touchMoved(touch);
}
void View::touchEnded(const Touch& touch) {
    if (const auto parent = strong(_superview)) parent->touchEnded(touch);
}
void View::touchCancelled(const Touch& touch) {
    if (const auto parent = strong(_superview)) parent->touchCancelled(touch);
}

void View::addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer) {
    recognizer->setView(this);
    _recognizers.push_back(recognizer);
}

// Focus

void View::setFocused(bool focused) {
    if (focused == _focused) return;
    _focused = focused;
    focusDidChange();
}

bool View::becomeFirstResponder() {
    if (!canBecomeFirstResponder() || !_window) return false;
    _window->setFirstResponder(strong(this));
    return true;
}

bool View::isFirstResponder() const { return _window && _window->firstResponder().get() == this; }

Rect rectForContent(Size size, const Rect& bounds, ContentMode mode) {
    if (mode == ContentMode::ScaleToFill || size.empty()) return bounds;
    double factor = 1;
    const double across = bounds.width() / size.width, down = bounds.height() / size.height;
    if (mode == ContentMode::AspectFit) factor = std::min(across, down);
    if (mode == ContentMode::AspectFill) factor = std::max(across, down);
    const Size scaled{size.width * factor, size.height * factor};
    return {bounds.midX() - scaled.width / 2, bounds.midY() - scaled.height / 2, scaled.width, scaled.height};
}

}  // namespace zornic
