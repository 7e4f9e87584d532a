#pragma once

#include <array>
#include <cstdint>

#include <cairo.h>

namespace helmo::demo {

/** Flat shapes in the four colours of a cover, on a square from (0, 0) to (1, 1). */
class CoverBrush {
public:
    enum Tone { Top, Bottom, Shape, Accent };

    /** The context stays the caller's; colours are 0xRRGGBB in the order of `Tone`. */
    CoverBrush(cairo_t* context, const std::array<std::uint32_t, 4>& colors) : _c(context), _colors(colors) {}

protected:
    /** The whole square, from `Top` to `Bottom`. */
    void ground();
    void ink(Tone tone, double alpha = 1);
    /** A tone `share` of the way to another. */
    void blend(Tone from, Tone to, double share, double alpha = 1);
    void disc(double x, double y, double radius);
    void ring(double x, double y, double radius, double width);
    void box(double x, double y, double width, double height);
    void line(double x0, double y0, double x1, double y1, double width);
    /** Everything below a wave around height `y`. */
    void swell(double y, double height, double length, double phase);

    cairo_t* _c;

private:
    std::array<std::uint32_t, 4> _colors;
};

}  // namespace helmo::demo
