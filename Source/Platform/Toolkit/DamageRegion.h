#pragma once

#include <utility>
#include <vector>

#include "Platform/Toolkit/Geometry.h"

namespace zornic {

/** Parts of a window (points) that must be drawn again before the next frame. Contained parts vanish, near
   ones join, and too many become the whole. */
class DamageRegion {
public:
    static constexpr std::size_t maxRects = 16;
    explicit DamageRegion(Rect window = {}) : _window(window) {}
    void setWindow(Rect window) { _window = window; }
    void add(Rect area);
    bool empty() const { return _rects.empty(); }
    const std::vector<Rect>& rects() const { return _rects; }
    /** What is to be drawn, once a frame. */
    std::vector<Rect> take() { return std::exchange(_rects, {}); }

private:
    Rect _window;
    std::vector<Rect> _rects;
};

}  // namespace zornic
