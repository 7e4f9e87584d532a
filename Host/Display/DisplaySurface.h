#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Host/Display/CairoHandles.h"
#include "Host/Display/FrameStatistics.h"
#include "Host/Display/RenderCache.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Toolkit/Geometry.h"

namespace zornic {
class Window;
}

namespace helmo {

/** The display's pixels, in memory. Main thread. */
class DisplaySurface {
public:
    /** In pixels. */
    struct PixelRect {
        int x = 0, y = 0, width = 0, height = 0;
    };

    /** `size` in points, `scale` in pixels a point; both are brought into what a display can have. */
    DisplaySurface(zornic::Size size, double scale);

    zornic::Size size() const { return {_pixels.width() / _scale, _pixels.height() / _scale}; }
    double scale() const { return _scale; }
    const Surface& pixels() const { return _pixels; }
    /** Black until a window is rendered: add its whole bounds to its damage. */
    void resize(zornic::Size size, double scale);

    /** Draws what the window says is damaged, and returns what was drawn; nothing when nothing was. */
    std::vector<PixelRect> render(zornic::Window& window);
    FrameStatistics& statistics() { return _statistics; }
    /** Returns why it could not be written; empty when it was. */
    std::string writePng(const std::filesystem::path& file) const;

private:
    PixelRect enclosing(const zornic::Rect& area) const;

    Surface _pixels;
    double _scale = 1;
    RenderCache _cache;
    FrameStatistics _statistics;
    zornic::SystemClock _clock;
};

}  // namespace helmo
