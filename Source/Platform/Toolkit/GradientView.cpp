#include "Platform/Toolkit/GradientView.h"

namespace zornic {

void GradientView::setColors(std::vector<Color> colors) {
    if (colors == _colors) return;
    _colors = std::move(colors);
    setNeedsDisplay();
}

void GradientView::drawRect(Canvas& canvas, const Rect&) {
    if (_colors.size() == 1)
        canvas.fillRect(bounds(), _colors.front());
    else if (!_colors.empty())
        canvas.fillGradient(bounds(), _colors);
}

}  // namespace zornic
