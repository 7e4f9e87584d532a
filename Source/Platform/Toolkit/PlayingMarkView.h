#pragma once

#include "Platform/Toolkit/View.h"

namespace zornic {

/** Three bars in the tint colour: moving while it plays, still when paused; redrawn at most ten times a
   second, and only itself. Main thread. */
class PlayingMarkView : public View {
public:
    PlayingMarkView();
    void setMoving(bool moving);
    void setColor(std::optional<Color> color);
    Size sizeThatFits(Size) override { return {16, 16}; }
    void drawRect(Canvas& canvas, const Rect& dirty) override;
    void didMoveToWindow() override;
    bool pointInside(Point) const override { return false; }

private:
    void updateTimer();
    bool _moving = false;
    int _step = 0;
    std::optional<Color> _color;
    Token _timer;
};

}  // namespace zornic
