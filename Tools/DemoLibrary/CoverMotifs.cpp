#include "Tools/DemoLibrary/CoverMotifs.h"

#include <cmath>
#include <numbers>

#include "Tools/DemoLibrary/Random.h"

namespace helmo::demo {

namespace {

constexpr double pi = std::numbers::pi;

}  // namespace

void CoverMotifs::paint() {
    ground();
    switch (_motif) {
        case Motif::Harbour:
            return harbour();
        case Motif::Reeds:
            return reeds();
        case Motif::Swallows:
            return swallows();
        case Motif::Rails:
            return rails();
        case Motif::Bay:
            return bay();
        case Motif::Tram:
            return tram();
        case Motif::Rain:
            return rain();
        case Motif::Moon:
            return moon();
        case Motif::Star:
            return star();
        case Motif::Keys:
            return keys();
        case Motif::Rings:
            return rings();
        case Motif::Road:
            return road();
        case Motif::Firs:
            return firs();
        case Motif::Orchard:
            return orchard();
    }
}

void CoverMotifs::harbour() {
    ink(Accent);
    disc(0.5, 0.44, 0.21);
    for (int i = 0; i < 5; ++i) {
        blend(Bottom, Shape, 0.35 + 0.16 * i);
        swell(0.52 + 0.1 * i, 0.022 + 0.004 * i, 0.5 - 0.05 * i, 0.9 * i);
    }
    ink(Accent, 0.75);
    for (int i = 0; i < 4; ++i) box(0.5 - 0.13 + 0.025 * i, 0.575 + 0.1 * i, 0.26 - 0.05 * i, 0.014);
}

void CoverMotifs::reeds() {
    ink(Accent, 0.9);
    disc(0.68, 0.3, 0.15);
    blend(Bottom, Shape, 0.3);
    swell(0.76, 0.015, 0.8, 1);
    Random random(7);
    cairo_set_line_cap(_c, CAIRO_LINE_CAP_ROUND);
    for (int i = 0; i < 15; ++i) {
        const double foot = 0.03 + 0.066 * i + random.between(-0.015, 0.015);
        const double tip = random.between(0.22, 0.6);
        const double lean = random.between(0.04, 0.14);
        blend(Bottom, Shape, random.between(0.7, 1));
        cairo_set_line_width(_c, 0.016);
        cairo_move_to(_c, foot, 1.02);
        cairo_curve_to(_c, foot, 0.8, foot + lean * 0.3, tip + 0.2, foot + lean, tip);
        cairo_stroke(_c);
        if (i % 3 == 1) line(foot + lean * 0.72, tip + 0.1, foot + lean, tip, 0.042);
    }
}

void CoverMotifs::swallows() {
    ink(Accent);
    disc(0.3, 0.7, 0.2);
    ink(Shape);
    swallow(0.6, 0.34, 0.34, -0.35);
    swallow(0.24, 0.24, 0.16, -0.15);
    swallow(0.78, 0.78, 0.19, -0.6);
}

void CoverMotifs::rails() {
    ink(Shape);
    disc(0.5, 0.36, 0.16);
    blend(Top, Bottom, 0.2);
    box(0, 0.44, 1, 0.56);
    cairo_set_line_cap(_c, CAIRO_LINE_CAP_BUTT);
    for (int i = 0; i < 9; ++i) {
        const double nearness = std::pow((i + 1) / 9.0, 2);
        ink(Shape, 0.25 + 0.5 * nearness);
        const double y = 0.45 + 0.55 * nearness;
        box(0.5 - 0.46 * nearness, y, 0.92 * nearness, 0.008 + 0.03 * nearness);
    }
    ink(Accent);
    for (const double side : {-1.0, 1.0}) {
        cairo_move_to(_c, 0.5 + 0.006 * side, 0.44);
        cairo_line_to(_c, 0.5 + 0.4 * side, 1);
        cairo_line_to(_c, 0.5 + 0.32 * side, 1);
        cairo_close_path(_c);
        cairo_fill(_c);
    }
}

void CoverMotifs::bay() {
    ink(Accent);
    disc(0.7, 0.27, 0.12);
    blend(Bottom, Shape, 0.45);
    cairo_move_to(_c, 0, 0.52);
    cairo_curve_to(_c, 0.15, 0.28, 0.3, 0.34, 0.55, 0.52);
    cairo_fill(_c);
    ink(Shape);
    box(0, 0.52, 1, 0.48);
    blend(Shape, Top, 0.3);
    swell(0.72, 0.02, 0.45, 0);
    blend(Shape, Top, 0.6);
    swell(0.86, 0.02, 0.6, 2);
    ink(Top);
    for (const double side : {1.0, -0.65}) {
        cairo_move_to(_c, 0.42 + 0.012 * side, 0.24);
        cairo_line_to(_c, 0.42 + 0.26 * side, 0.6);
        cairo_line_to(_c, 0.42 + 0.012 * side, 0.6);
        cairo_fill(_c);
    }
    ink(Accent);
    cairo_move_to(_c, 0.2, 0.63);
    cairo_line_to(_c, 0.68, 0.63);
    cairo_curve_to(_c, 0.62, 0.72, 0.3, 0.72, 0.2, 0.63);
    cairo_fill(_c);
}

void CoverMotifs::tram() {
    blend(Top, Bottom, 0.15);
    box(0.04, 0.4, 0.14, 0.46);
    box(0.74, 0.3, 0.3, 0.56);
    ink(Accent);
    box(0, 0.86, 1, 0.14);
    line(0, 0.13, 1, 0.09, 0.01);
    line(0.5, 0.32, 0.42, 0.115, 0.016);
    ink(Shape);
    box(0.17, 0.32, 0.66, 0.5);
    ink(Top);
    for (int i = 0; i < 3; ++i) box(0.22 + 0.2 * i, 0.4, 0.155, 0.17);
    disc(0.33, 0.83, 0.06);
    disc(0.67, 0.83, 0.06);
    ink(Accent);
    box(0.17, 0.655, 0.66, 0.035);
    Random random(21);
    for (int i = 0; i < 44; ++i) {
        disc(random.unit(), random.between(0.0, 0.86), random.between(0.006, 0.015));
    }
}

void CoverMotifs::rain() {
    cairo_set_line_cap(_c, CAIRO_LINE_CAP_ROUND);
    Random random(5);
    for (int i = 0; i < 34; ++i) {
        ink(Accent, random.between(0.18, 0.5));
        const double x = random.between(-0.05, 1.05);
        const double y = random.between(-0.1, 0.95);
        const double length = random.between(0.07, 0.2);
        line(x, y, x - length * 0.22, y + length, 0.011);
    }
    ink(Shape);
    ring(0.735, 0.6, 0.1, 0.05);
    cairo_move_to(_c, 0.24, 0.46);
    cairo_line_to(_c, 0.72, 0.46);
    cairo_curve_to(_c, 0.72, 0.72, 0.62, 0.8, 0.48, 0.8);
    cairo_curve_to(_c, 0.34, 0.8, 0.24, 0.72, 0.24, 0.46);
    cairo_fill(_c);
    box(0.16, 0.83, 0.64, 0.035);
    ink(Accent);
    for (int i = 0; i < 3; ++i) {
        const double x = 0.38 + 0.1 * i;
        cairo_set_line_width(_c, 0.022);
        cairo_move_to(_c, x, 0.4);
        cairo_curve_to(_c, x - 0.06, 0.33, x + 0.06, 0.27, x, 0.19);
        cairo_stroke(_c);
    }
}

void CoverMotifs::moon() {
    cairo_save(_c);
    cairo_set_fill_rule(_c, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_rectangle(_c, 0, 0, 1, 1);
    cairo_new_sub_path(_c);
    cairo_arc(_c, 0.45, 0.33, 0.22, 0, 2 * pi);
    cairo_clip(_c);
    ink(Accent);
    disc(0.54, 0.4, 0.27);
    cairo_restore(_c);
    ink(Accent);
    disc(0.18, 0.2, 0.018);
    disc(0.34, 0.44, 0.013);
    disc(0.86, 0.16, 0.016);
    blend(Bottom, Shape, 0.45);
    swell(0.72, 0.05, 0.9, 0.5);
    ink(Shape);
    swell(0.82, 0.045, 0.7, 2.6);
}

void CoverMotifs::star() {
    const auto square = [this](double x, double y, double half, double angle) {
        cairo_save(_c);
        cairo_translate(_c, x, y);
        cairo_rotate(_c, angle);
        box(-half, -half, 2 * half, 2 * half);
        cairo_restore(_c);
    };
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const bool isMiddle = row == 1 && column == 1;
            const double x = column * 0.5;
            const double y = row * 0.5;
            const double half = isMiddle ? 0.25 : 0.14;
            ink(isMiddle ? Shape : Accent);
            square(x, y, half, 0);
            square(x, y, half, pi / 4);
            ink(Top);
            disc(x, y, half * 0.72);
        }
    }
    ink(Accent);
    for (int petal = 0; petal < 5; ++petal) {
        const double angle = petal * 2 * pi / 5 - pi / 2;
        disc(0.5 + 0.085 * std::cos(angle), 0.5 + 0.085 * std::sin(angle), 0.056);
    }
    ink(Shape);
    disc(0.5, 0.5, 0.04);
}

void CoverMotifs::keys() {
    static constexpr double heights[] = {0.62, 0.5, 0.7, 0.36, 0.55, 0.44, 0.66};
    for (int i = 0; i < 7; ++i) {
        if (i == 3)
            ink(Accent);
        else
            ink(Shape);
        box(0.115 + 0.115 * i, 0.1, 0.06, heights[i]);
    }
    ink(Shape);
    box(0, 0.88, 1, 0.012);
    ink(Accent);
    disc(0.49, 0.68, 0.075);
}

void CoverMotifs::rings() {
    for (int i = 7; i >= 1; --i) {
        ink(Shape, 1.05 - 0.13 * i);
        ring(0.5, 0.62, 0.03 + 0.088 * i, 0.024);
    }
    ink(Accent);
    disc(0.5, 0.62, 0.07);
    blend(Top, Bottom, 0.5);
    box(0, 0.74, 1, 0.26);
    ink(Shape, 0.5);
    for (int i = 0; i < 3; ++i) box(0.24 + 0.07 * i, 0.79 + 0.06 * i, 0.52 - 0.14 * i, 0.014);
}

void CoverMotifs::road() {
    ink(Accent);
    disc(0.5, 0.47, 0.27);
    cairo_save(_c);
    cairo_arc(_c, 0.5, 0.47, 0.275, 0, 2 * pi);
    cairo_clip(_c);
    blend(Bottom, Top, 0.35);
    for (int i = 0; i < 4; ++i) box(0.2, 0.4 + 0.06 * i, 0.6, 0.01 + 0.006 * i);
    cairo_restore(_c);
    blend(Top, Shape, 0.5);
    box(0, 0.62, 1, 0.38);
    ink(Shape);
    cairo_move_to(_c, 0.48, 0.62);
    cairo_line_to(_c, 0.52, 0.62);
    cairo_line_to(_c, 1.0, 1);
    cairo_line_to(_c, 0, 1);
    cairo_fill(_c);
    ink(Accent);
    for (int i = 0; i < 4; ++i) {
        const double from = std::pow((i + 0.4) / 4.0, 1.8);
        const double to = std::pow((i + 0.9) / 4.0, 1.8);
        cairo_move_to(_c, 0.5 - 0.025 * from, 0.62 + 0.38 * from);
        cairo_line_to(_c, 0.5 + 0.025 * from, 0.62 + 0.38 * from);
        cairo_line_to(_c, 0.5 + 0.025 * to, 0.62 + 0.38 * to);
        cairo_line_to(_c, 0.5 - 0.025 * to, 0.62 + 0.38 * to);
        cairo_fill(_c);
    }
}

void CoverMotifs::firs() {
    ink(Accent);
    disc(0.7, 0.27, 0.12);
    blend(Top, Shape, 0.35);
    fir(0.12, 0.82, 0.4);
    fir(0.88, 0.82, 0.36);
    blend(Top, Shape, 0.7);
    fir(0.66, 0.84, 0.46);
    ink(Shape);
    fir(0.36, 0.86, 0.66);
    ink(Bottom);
    swell(0.84, 0.018, 0.9, 1.2);
    Random random(3);
    for (int i = 0; i < 26; ++i) disc(random.unit(), random.between(0, 0.82), random.between(0.006, 0.013));
}

void CoverMotifs::orchard() {
    cairo_set_line_width(_c, 0.012);
    for (int i = 0; i < 6; ++i) {
        ink(Shape, 0.45);
        const double spread = 0.1 + 0.12 * i;
        cairo_save(_c);
        cairo_translate(_c, 0.46, 0.46);
        cairo_rotate(_c, 0.5 + 0.06 * i);
        cairo_scale(_c, spread * 1.35, spread);
        cairo_arc(_c, 0, 0, 1, 0, 2 * pi);
        cairo_restore(_c);
        cairo_stroke(_c);
    }
    ink(Shape);
    box(0.43, 0.5, 0.06, 0.34);
    disc(0.46, 0.36, 0.2);
    disc(0.3, 0.46, 0.14);
    disc(0.62, 0.46, 0.14);
    ink(Accent);
    disc(0.4, 0.32, 0.045);
    disc(0.56, 0.42, 0.045);
    disc(0.32, 0.48, 0.045);
    disc(0.72, 0.81, 0.045);
    box(0.2, 0.84, 0.6, 0.02);
}

void CoverMotifs::swallow(double x, double y, double size, double angle) {
    cairo_save(_c);
    cairo_translate(_c, x, y);
    cairo_rotate(_c, angle);
    cairo_scale(_c, size, size);
    cairo_move_to(_c, 0.62, 0);
    cairo_curve_to(_c, 0.4, -0.14, 0.2, -0.12, 0.12, -0.14);
    cairo_curve_to(_c, 0.0, -0.5, -0.3, -0.72, -0.6, -0.8);
    cairo_curve_to(_c, -0.42, -0.55, -0.3, -0.3, -0.28, -0.06);
    cairo_curve_to(_c, -0.5, -0.12, -0.7, -0.14, -0.95, -0.2);
    cairo_curve_to(_c, -0.75, -0.08, -0.66, -0.02, -0.6, 0.02);
    cairo_curve_to(_c, -0.66, 0.08, -0.75, 0.16, -0.92, 0.28);
    cairo_curve_to(_c, -0.6, 0.22, -0.45, 0.16, -0.28, 0.1);
    cairo_curve_to(_c, -0.2, 0.32, -0.3, 0.56, -0.42, 0.82);
    cairo_curve_to(_c, -0.1, 0.66, 0.1, 0.44, 0.16, 0.12);
    cairo_curve_to(_c, 0.3, 0.1, 0.45, 0.1, 0.62, 0);
    cairo_fill(_c);
    cairo_restore(_c);
}

void CoverMotifs::fir(double x, double foot, double height) {
    for (int tier = 0; tier < 3; ++tier) {
        const double top = foot - height + tier * height * 0.24;
        const double half = height * (0.17 + 0.075 * tier);
        cairo_move_to(_c, x, top);
        cairo_line_to(_c, x + half, top + height * 0.44);
        cairo_line_to(_c, x - half, top + height * 0.44);
        cairo_fill(_c);
    }
    box(x - height * 0.03, foot - height * 0.1, height * 0.06, height * 0.2);
}

}  // namespace helmo::demo
