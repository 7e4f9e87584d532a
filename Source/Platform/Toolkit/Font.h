#pragma once

namespace zornic {

enum class FontWeight { Thin, Regular, Bold };

/** A size and weight of the display's one family. Sizes and metrics in points. A value. */
struct Font {
    double size = 17;
    FontWeight weight = FontWeight::Regular;

    static constexpr Font systemFont(double size) { return {size, FontWeight::Regular}; }
    static constexpr Font boldSystemFont(double size) { return {size, FontWeight::Bold}; }
    static constexpr Font thinSystemFont(double size) { return {size, FontWeight::Thin}; }

    /** Above the baseline. */
    double ascender() const;
    /** Below the baseline, negative. */
    double descender() const;
    double lineHeight() const;
    double xHeight() const;

    friend constexpr bool operator==(const Font&, const Font&) = default;
};

}  // namespace zornic
