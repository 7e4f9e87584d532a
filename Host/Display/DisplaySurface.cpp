#include "Host/Display/DisplaySurface.h"

#include <algorithm>
#include <cmath>

#include "Host/Display/CairoCanvas.h"
#include "Platform/Toolkit/Window.h"

namespace helmo {

namespace {

int pixelCount(double points, double scale) {
    constexpr double most = 8192;
    return static_cast<int>(std::clamp(std::round(points * scale), 1.0, most));
}

void clear(cairo_t* context) {
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_paint(context);
}

}  // namespace

DisplaySurface::DisplaySurface(zornic::Size size, double scale) { resize(size, scale); }

void DisplaySurface::resize(zornic::Size size, double scale) {
    _scale = std::clamp(scale, 0.25, 8.0);
    _pixels = Surface(pixelCount(size.width, _scale), pixelCount(size.height, _scale));
    if (_pixels) clear(makeContext(_pixels).get());
}

DisplaySurface::PixelRect DisplaySurface::enclosing(const zornic::Rect& area) const {
    // A little off a whole pixel is rounding, not a pixel more.
    constexpr double tolerance = 1e-3;
    const auto first = [this](double points, int last) {
        return static_cast<int>(
            std::clamp(std::floor(points * _scale + tolerance), 0.0, static_cast<double>(last)));
    };
    const auto end = [this](double points, int last) {
        return static_cast<int>(
            std::clamp(std::ceil(points * _scale - tolerance), 0.0, static_cast<double>(last)));
    };
    const int x = first(area.x(), _pixels.width()), y = first(area.y(), _pixels.height());
    return {x, y, end(area.maxX(), _pixels.width()) - x, end(area.maxY(), _pixels.height()) - y};
}

std::vector<DisplaySurface::PixelRect> DisplaySurface::render(zornic::Window& window) {
    const auto start = _clock.now();
    std::vector<PixelRect> drawn;
    for (const auto& area : window.takeDamage()) {
        const auto rect = enclosing(area);
        if (rect.width <= 0 || rect.height <= 0) continue;
        // Rectangle by rectangle, since one clip around two far corners would draw all between them.
        const auto context = makeContext(_pixels);
        cairo_rectangle(context.get(), rect.x, rect.y, rect.width, rect.height);
        cairo_clip(context.get());
        if (!window.layer()->covers(area)) clear(context.get());
        CairoCanvas canvas(context.get(), _scale, _cache);
        window.render(canvas);
        drawn.push_back(rect);
    }
    if (!drawn.empty()) _statistics.add(_clock.now() - start);
    return drawn;
}

std::string DisplaySurface::writePng(const std::filesystem::path& file) const {
    if (!_pixels) return "There was no memory for the display's pixels.";
    const auto status = cairo_surface_write_to_png(_pixels.get(), file.c_str());
    if (status == CAIRO_STATUS_SUCCESS) return {};
    return "Can't write " + file.string() + ": " + cairo_status_to_string(status) + ".";
}

}  // namespace helmo
