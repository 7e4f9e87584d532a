#pragma once

namespace zornic {

/** A colour, components from 0 to 1, not premultiplied. A value. */
struct Color {
    double red = 0, green = 0, blue = 0, alpha = 1;

    static constexpr Color white(double white, double alpha = 1) { return {white, white, white, alpha}; }
    static constexpr Color rgb(unsigned hex, double alpha = 1) {
        return {((hex >> 16) & 255) / 255.0, ((hex >> 8) & 255) / 255.0, (hex & 255) / 255.0, alpha};
    }
    static constexpr Color clear() { return {0, 0, 0, 0}; }
    static constexpr Color blackColor() { return white(0); }
    static constexpr Color whiteColor() { return white(1); }
    constexpr Color withAlpha(double a) const { return {red, green, blue, a}; }

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

/** The external display's system colours. */
constexpr Color _externalSystemBarBackgroundColor() { return Color::rgb(0x0B0C0E); }
constexpr Color _externalSystemExtraDarkGrayColor() { return Color::rgb(0x15171A); }
constexpr Color _externalSystemSuperDarkGrayColor() { return Color::rgb(0x1D2024); }
constexpr Color _externalSystemDarkGrayColor() { return Color::rgb(0x363B42); }
constexpr Color _externalSystemMidGrayColor() { return Color::rgb(0x4A4F57); }
constexpr Color _externalSystemGrayColor() { return Color::rgb(0xA9AFB8); }
constexpr Color _externalSystemTealColor() { return Color::rgb(0x3CC9BC); }
/** A label's colour where none is set. */
constexpr Color labelDefaultColor() { return Color::whiteColor(); }

}  // namespace zornic
