#include "Host/Settings/SettingsValues.h"

#include <array>
#include <charconv>

namespace helmo {

namespace {

constexpr std::array modeTexts = {"touch", "lowtouch", "knob"};

/** The number that is all of `text`; nullopt when it is none or out of range. */
template <class Number>
std::optional<Number> numberFrom(std::string_view text, Number least, Number most) {
    Number number{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (!(number >= least && number <= most)) return std::nullopt;
    return number;
}

}  // namespace

std::optional<InteractionMode> interactionModeFromText(std::string_view text) {
    for (std::size_t i = 0; i < modeTexts.size(); ++i)
        if (text == modeTexts[i] || text == std::to_string(i)) return static_cast<InteractionMode>(i);
    return std::nullopt;
}

const char* textOf(InteractionMode mode) { return modeTexts[static_cast<std::size_t>(mode)]; }

std::optional<ScreenSize> ScreenSize::fromText(std::string_view text) {
    const auto cross = text.find('x');
    if (cross == std::string_view::npos) return std::nullopt;
    const auto at = text.find('@', cross);
    const auto width = numberFrom(text.substr(0, cross), 200, 8192);
    const auto height =
        numberFrom(text.substr(cross + 1, at == std::string_view::npos ? at : at - cross - 1), 200, 8192);
    const auto scale =
        at == std::string_view::npos ? std::optional(1.0) : numberFrom(text.substr(at + 1), 0.5, 4.0);
    if (!width || !height || !scale) return std::nullopt;
    return ScreenSize{*width, *height, *scale};
}

std::string ScreenSize::text() const {
    std::string result = std::to_string(width) + "x" + std::to_string(height);
    if (scale == 1) return result;
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, scale).ptr;
    return result + "@" + std::string(digits, end);
}

}  // namespace helmo
