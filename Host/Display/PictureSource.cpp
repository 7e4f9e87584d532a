#include "Host/Display/PictureSource.h"

namespace helmo {

Surface PictureSource::held(int width, int height) const {
    return width == _pixels.width() && height == _pixels.height() ? _pixels : Surface();
}

Surface PictureSource::rendered(int width, int height) const {
    if (auto pixels = held(width, height)) return pixels;
    Surface result(width, height);
    if (!result || _size.empty()) return result;
    const auto context = makeContext(result);
    cairo_scale(context.get(), static_cast<double>(width) / _pixels.width(),
                static_cast<double>(height) / _pixels.height());
    cairo_set_source_surface(context.get(), _pixels.get(), 0, 0);
    cairo_pattern_t* const pattern = cairo_get_source(context.get());
    // Averages over all pixels when it shrinks, and leaves the edge opaque when it grows.
    cairo_pattern_set_filter(pattern, CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_set_operator(context.get(), CAIRO_OPERATOR_SOURCE);
    cairo_paint(context.get());
    return result;
}

}  // namespace helmo
