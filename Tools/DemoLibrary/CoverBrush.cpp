#include "Tools/DemoLibrary/CoverBrush.h"

#include <cmath>
#include <numbers>

namespace helmo::demo {

namespace {

double channel(std::uint32_t color, int shift) { return static_cast<double>(color >> shift & 0xffU) / 255; }

}  // namespace

void CoverBrush::ground() {
    cairo_pattern_t* fade = cairo_pattern_create_linear(0, 0, 0, 1);
    for (const Tone tone : {Top, Bottom}) {
        const std::uint32_t color = _colors[tone];
        cairo_pattern_add_color_stop_rgb(fade, tone == Top ? 0 : 1, channel(color, 16), channel(color, 8),
                                         channel(color, 0));
    }
    cairo_set_source(_c, fade);
    cairo_pattern_destroy(fade);
    cairo_paint(_c);
}

void CoverBrush::ink(Tone tone, double alpha) { blend(tone, tone, 0, alpha); }

void CoverBrush::blend(Tone from, Tone to, double share, double alpha) {
    const auto mixed = [&](int shift) {
        return channel(_colors[from], shift) * (1 - share) + channel(_colors[to], shift) * share;
    };
    cairo_set_source_rgba(_c, mixed(16), mixed(8), mixed(0), alpha);
}

void CoverBrush::disc(double x, double y, double radius) {
    cairo_new_path(_c);
    cairo_arc(_c, x, y, radius, 0, 2 * std::numbers::pi);
    cairo_fill(_c);
}

void CoverBrush::ring(double x, double y, double radius, double width) {
    cairo_new_path(_c);
    cairo_set_line_width(_c, width);
    cairo_arc(_c, x, y, radius, 0, 2 * std::numbers::pi);
    cairo_stroke(_c);
}

void CoverBrush::box(double x, double y, double width, double height) {
    cairo_rectangle(_c, x, y, width, height);
    cairo_fill(_c);
}

void CoverBrush::line(double x0, double y0, double x1, double y1, double width) {
    cairo_set_line_width(_c, width);
    cairo_move_to(_c, x0, y0);
    cairo_line_to(_c, x1, y1);
    cairo_stroke(_c);
}

void CoverBrush::swell(double y, double height, double length, double phase) {
    cairo_move_to(_c, 0, 1);
    for (int i = 0; i <= 100; ++i) {
        const double x = i / 100.0;
        cairo_line_to(_c, x, y + height * std::sin(2 * std::numbers::pi * x / length + phase));
    }
    cairo_line_to(_c, 1, 1);
    cairo_fill(_c);
}

}  // namespace helmo::demo
