#include "Platform/Toolkit/ActivityIndicatorView.h"

#include <cmath>
#include <numbers>

#include "Platform/Foundation/RunLoop.h"

namespace zornic {

namespace {

constexpr int dotCount = 10;
constexpr double dotShare = 0.16;  // of the view's length
constexpr double faintest = 0.15;

}  // namespace

ActivityIndicatorView::ActivityIndicatorView(int style) : View({0, 0, 20, 20}), _style(style) {}

void ActivityIndicatorView::startAnimating() {
    _animating = true;
    updateTimer();
    setNeedsDisplay();
}

void ActivityIndicatorView::stopAnimating() {
    _animating = false;
    updateTimer();
    setNeedsDisplay();
}

void ActivityIndicatorView::didMoveToWindow() {
    View::didMoveToWindow();
    updateTimer();
}

void ActivityIndicatorView::updateTimer() {
    if (!_animating || !window() || !RunLoop::hasMain()) {
        _timer.reset();
    } else if (!_timer) {
        _timer = RunLoop::main().every(std::chrono::milliseconds(100), [this] {
            _step = (_step + 1) % dotCount;
            setNeedsDisplay();
        });
    }
}

/** Dots around a circle, the brightest running clockwise with a fading tail. */
void ActivityIndicatorView::drawRect(Canvas& canvas, const Rect&) {
    if (!_animating) return;
    const Color color = _style == 0 ? Color::whiteColor() : _externalSystemGrayColor();
    const double length = std::min(bounds().width(), bounds().height());
    const double dot = length * dotShare, radius = (length - dot) / 2;
    for (int index = 0; index < dotCount; ++index) {
        const double angle = 2 * std::numbers::pi * index / dotCount;
        const int age = (_step - index + dotCount) % dotCount;
        const double alpha = faintest + (1 - faintest) * (1 - static_cast<double>(age) / (dotCount - 1));
        const Point middle = bounds().center() + Point{radius * std::sin(angle), -radius * std::cos(angle)};
        canvas.fillRoundedRect({middle.x - dot / 2, middle.y - dot / 2, dot, dot}, dot / 2,
                               color.withAlpha(alpha));
    }
}

}  // namespace zornic
