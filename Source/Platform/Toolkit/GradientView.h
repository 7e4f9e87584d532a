#pragma once

#include "Platform/Toolkit/View.h"

namespace zornic {

/** A vertical gradient through its colours, the first at the top. Main thread. */
class GradientView : public View {
public:
    using View::View;
    const std::vector<Color>& colors() const { return _colors; }
    void setColors(std::vector<Color> colors);
    void drawRect(Canvas& canvas, const Rect& dirty) override;
    bool pointInside(Point) const override { return false; }

private:
    std::vector<Color> _colors;
};

}  // namespace zornic
