#include "Platform/Toolkit/PlayingMarkView.h"

#include <array>

#include "Platform/Foundation/RunLoop.h"

namespace zornic {

namespace {

constexpr auto beat = std::chrono::milliseconds(125);
constexpr double barWidth = 4, barGap = 2;
/** Heights of the three bars in points, one row a beat. */
constexpr std::array<std::array<double, 3>, 8> heights = {
    {{8, 14, 6}, {12, 10, 9}, {15, 6, 12}, {11, 9, 15}, {6, 13, 11}, {9, 16, 7}, {13, 11, 5}, {10, 7, 10}}};

}  // namespace

PlayingMarkView::PlayingMarkView() : View({0, 0, 16, 16}) {}

void PlayingMarkView::setMoving(bool moving) {
    _moving = moving;
    updateTimer();
}

void PlayingMarkView::setColor(std::optional<Color> color) {
    if (color == _color) return;
    _color = color;
    setNeedsDisplay();
}

void PlayingMarkView::didMoveToWindow() {
    View::didMoveToWindow();
    updateTimer();
}

void PlayingMarkView::updateTimer() {
    const bool runs = _moving && window();
    if (runs == static_cast<bool>(_timer)) return;
    if (!runs) return _timer.reset();
    _timer = RunLoop::main().every(beat, [this] {
        _step = (_step + 1) % static_cast<int>(heights.size());
        setNeedsDisplay();
    });
}

void PlayingMarkView::drawRect(Canvas& canvas, const Rect&) {
    const Color color = _color.value_or(tintColor());
    double x = 0;
    for (const double height : heights[static_cast<std::size_t>(_step)]) {
        canvas.fillRoundedRect({x, bounds().height() - height, barWidth, height}, 1, color);
        x += barWidth + barGap;
    }
}

}  // namespace zornic
