#pragma once

#include "Host/Display/CairoImageSource.h"

namespace helmo {

/** Decoded pixels. */
class PictureSource final : public CairoImageSource {
public:
    /** `size` in points may differ from the pixels by less than a pixel, or be zero: a picture that shows
     * nothing. */
    PictureSource(Surface pixels, zornic::Size size, double scale)
        : _pixels(std::move(pixels)), _size(size), _scale(scale) {}

    zornic::Size size() const override { return _size; }
    double scale() const override { return _scale; }
    std::size_t cost() const override { return _pixels.bytes(); }
    Surface rendered(int width, int height) const override;
    Surface held(int width, int height) const override;

private:
    const Surface _pixels;
    const zornic::Size _size;
    const double _scale;
};

}  // namespace helmo
