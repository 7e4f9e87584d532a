#include "Platform/Toolkit/ScrollView.h"

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/Animation.h"

namespace zornic {

namespace {

using namespace std::chrono_literals;

constexpr double dragSlop = 8;         // points
constexpr double decayTime = 0.325;    // seconds in which inertia loses all but 1/e of its speed
constexpr double slowestThrow = 60;    // points a second
constexpr double fastestThrow = 8000;  // points a second
constexpr double arrived = 0.5;        // points
constexpr double nearRest = 6;         // points to go: it looks still, and a tap means what is under it
constexpr Seconds springTime{0.2}, scrollTime{0.25};
constexpr auto indicatorTime = 800ms;
constexpr double indicatorWidth = 3, indicatorMargin = 3, shortestIndicator = 24;

}  // namespace

ScrollView::ScrollView(const Rect& frame) : View(frame) {}

void ScrollView::didMake() {
    View::didMake();
    setClipsToBounds(true);
    _pan = make<PanGestureRecognizer>(PanGestureRecognizer::Axis::Vertical, dragSlop);
    _pan->shouldBegin = [this](const Touch& touch) { return shouldDragBegin(touch); };
    _pan->handler = [this](PanGestureRecognizer& recognizer) { pan(recognizer); };
    addGestureRecognizer(_pan);
    _indicator = make<View>();
    _indicator->setUserInteractionEnabled(false);
    _indicator->setHidden(true);
    _indicator->setBackgroundColor(_externalSystemGrayColor().withAlpha(0.6));
    _indicator->layer()->setCornerRadius(indicatorWidth / 2);
    addSubview(_indicator);
}

double ScrollView::maximumOffset() const { return std::max(0.0, _contentSize.height - bounds().height()); }

void ScrollView::setContentSize(Size size) {
    if (size == _contentSize) return;
    _contentSize = size;
    if (!_dragging && contentOffset().y > maximumOffset()) {
        _motion.reset();
        moveTo(maximumOffset());
    }
    placeIndicator();
}

void ScrollView::setContentOffset(Point offset, bool animated) {
    const double target = clamped(offset.y);
    _motion.reset();
    // A finger that is down goes on from the new place.
    if (_dragging) _offsetAtStart += target - contentOffset().y;
    if (animated && window())
        glideTo(target, scrollTime);
    else
        moveTo(target);
}

void ScrollView::setScrollEnabled(bool enabled) {
    _scrollEnabled = enabled;
    _pan->setEnabled(enabled);
}

void ScrollView::setBounds(const Rect& bounds) {
    const auto before = contentOffset();
    View::setBounds(bounds);
    placeIndicator();
    if (contentOffset() != before) contentOffsetDidChange();
}

void ScrollView::setFrame(const Rect& frame) {
    const bool resized = frame.size != bounds().size;
    View::setFrame(frame);
    if (resized && !_dragging && !isDecelerating()) moveTo(clamped(contentOffset().y));
}

void ScrollView::layoutSubviews() {
    View::layoutSubviews();
    placeIndicator();
}

void ScrollView::didMoveToWindow() {
    View::didMoveToWindow();
    if (window()) return;
    // Out of sight nothing moves, and what comes back stands still inside its ends.
    _dragging = false;
    _motion.reset();
    _flash.reset();
    _indicator->setHidden(true);
    moveTo(clamped(contentOffset().y));
}

std::shared_ptr<View> ScrollView::hitTest(Point point) {
    auto hit = View::hitTest(point);
    return hit && isDecelerating() && !_isNearRest ? strong<View>(this) : hit;
}

void ScrollView::touchBegan(const Touch&) { _motion.reset(); }

void ScrollView::touchEnded(const Touch&) {
    if (!_dragging) settle(0);
}

void ScrollView::touchCancelled(const Touch&) {
    if (!_dragging) settle(0);
}

void ScrollView::pan(PanGestureRecognizer& recognizer) {
    const auto self = strong<ScrollView>(this);
    switch (recognizer.state()) {
        case GestureState::Began:
            _motion.reset();
            _dragging = true;
            _offsetAtStart = contentOffset().y;
            [[fallthrough]];
        case GestureState::Changed:
            moveTo(rubberBanded(_offsetAtStart - recognizer.translation()));
            break;
        case GestureState::Ended:
            _dragging = false;
            settle(-recognizer.velocity());
            break;
        default:
            _dragging = false;
            settle(0);
            break;
    }
}

double ScrollView::rubberBanded(double offset) const {
    const double inside = clamped(offset), most = maximumBounce();
    const double beyond = std::abs(offset - inside);
    if (beyond == 0 || most <= 0) return inside;
    return inside + std::copysign(most * beyond / (beyond + most), offset - inside);
}

void ScrollView::moveTo(double offset) {
    const auto self = strong<ScrollView>(this);
    const double shown = roundedToScale(offset, displayScale());
    if (shown == contentOffset().y) return;
    if (window()) flashScrollIndicators();
    setBounds({{contentOffset().x, shown}, bounds().size});
}

void ScrollView::settle(double velocity) {
    const double offset = contentOffset().y;
    if (offset != clamped(offset)) {
        glideTo(clamped(offset), springTime);
    } else if (std::abs(velocity) >= slowestThrow) {
        startInertia(std::clamp(velocity, -fastestThrow, fastestThrow));
    } else {
        const double rest = clamped(alignedOffset(offset));
        if (rest != offset)
            glideTo(rest, springTime);
        else
            scrollingDidEnd();
    }
}

void ScrollView::startInertia(double velocity) {
    const double start = contentOffset().y;
    double end = start + velocity * decayTime;
    // Speed is adjusted a little so that it runs out where the content is to rest. A throw beyond an end
    // keeps its speed and bounces there.
    if (end == clamped(end)) end = clamped(alignedOffset(end));
    _isNearRest = false;
    _motion = RunLoop::main().onFrame([this, start, end, begin = RunLoop::main().now()](TimePoint now) {
        const auto self = strong<ScrollView>(this);
        const double elapsed = Seconds(now - begin).count();
        const double offset = end + (start - end) * std::exp(-elapsed / decayTime);
        _isNearRest = std::abs(end - offset) < nearRest;
        const double beyond = std::abs(offset - clamped(offset));
        const bool done = std::abs(end - offset) < arrived || beyond >= maximumBounce();
        moveTo(rubberBanded(done && beyond == 0 ? end : offset));
        if (done) motionEnded();
    });
}

void ScrollView::glideTo(double offset, Seconds duration) {
    const double start = contentOffset().y;
    _isNearRest = false;
    _motion = animate(
        duration, easeOut,
        [this, start, offset](double progress) { moveTo(start + (offset - start) * progress); },
        [this](bool finished) {
            if (finished) motionEnded();
        });
}

void ScrollView::motionEnded() {
    _motion.reset();
    const double offset = contentOffset().y;
    // Also after content that became shorter on the way.
    if (std::abs(offset - clamped(offset)) >= 1 / displayScale())
        glideTo(clamped(offset), springTime);
    else
        scrollingDidEnd();
}

void ScrollView::setShowsVerticalScrollIndicator(bool shows) {
    _showsVertical = shows;
    if (!shows) _indicator->setHidden(true);
}

void ScrollView::setShowsHorizontalScrollIndicator(bool shows) { _showsHorizontal = shows; }

void ScrollView::flashScrollIndicators() {
    if (!_showsVertical || maximumOffset() <= 0) return;
    _indicator->setHidden(false);
    placeIndicator();
    _flash = RunLoop::main().after(indicatorTime, [this] { _indicator->setHidden(true); });
}

void ScrollView::placeIndicator() {
    if (!_indicator || _indicator->isHidden() || _contentSize.height <= 0) return;
    const Rect shown = bounds();
    const double room = shown.height() - 2 * indicatorMargin;
    const double part = std::min(1.0, shown.height() / _contentSize.height);
    const double length = std::max(shortestIndicator, room * part);
    const double progress = maximumOffset() > 0 ? clamped(shown.y()) / maximumOffset() : 0;
    _indicator->setFrame({shown.maxX() - indicatorMargin - indicatorWidth,
                          shown.y() + indicatorMargin + (room - length) * progress, indicatorWidth, length});
    if (subviews().back() != _indicator) bringSubviewToFront(_indicator);
}

}  // namespace zornic
