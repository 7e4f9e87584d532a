#include "Platform/Foundation/StringFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace zornic {

namespace {

constexpr std::size_t widest = 64;
constexpr int mostDecimals = 20;

struct Placeholder {
    char conversion = 0;
    std::optional<std::size_t> position;  // from 1
    bool zeros = false;
    std::size_t width = 0;
    int decimals = 6;
};

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

/** A number from the digits at the start, which are taken off; absurd ones stop at a million. */
std::size_t takeNumber(std::string_view& text) {
    std::size_t number = 0;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1))
        number = std::min<std::size_t>(number * 10 + static_cast<std::size_t>(text.front() - '0'), 1'000'000);
    return number;
}

bool take(std::string_view& text, char wanted) {
    if (!text.starts_with(wanted)) return false;
    text.remove_prefix(1);
    return true;
}

/** Reads what follows a "%" and takes it off `text`; none, with `text` as it was, when it is no placeholder.
 */
std::optional<Placeholder> takePlaceholder(std::string_view& text) {
    Placeholder result;
    auto rest = text;
    if (auto afterDigits = rest; takeNumber(afterDigits) > 0 && take(afterDigits, '$')) {
        result.position = takeNumber(rest);
        take(rest, '$');
    }
    result.zeros = take(rest, '0');
    result.width = std::min(takeNumber(rest), widest);
    const bool hasDecimals = take(rest, '.');
    if (hasDecimals)
        result.decimals = static_cast<int>(std::min<std::size_t>(takeNumber(rest), mostDecimals));
    const bool isLong = take(rest, 'l');
    if (isLong) take(rest, 'l');
    if (rest.empty()) return std::nullopt;
    result.conversion = rest.front();
    const bool isWhole = result.conversion == 'd' || result.conversion == 'i' || result.conversion == 'u';
    const bool isPlain = !isLong && !hasDecimals;
    const bool isKnown =
        isWhole ? !hasDecimals : result.conversion == 'f' || (result.conversion == '@' && isPlain);
    if (!isKnown) return std::nullopt;
    rest.remove_prefix(1);
    text = rest;
    return result;
}

/** Text of a number by std::to_chars: the same on every machine, whatever the process's locale. */
template <class... Arguments>
std::string numberText(Arguments... arguments) {
    char buffer[512];  // the largest number has 309 digits before the point
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, arguments...).ptr;
    return {buffer, end};
}

struct ArgumentText {
    const Placeholder& placeholder;

    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(double number) const {
        switch (placeholder.conversion) {
            case '@':
                return padded(shortest(number));
            case 'f':
                return padded(numberText(number, std::chars_format::fixed, placeholder.decimals));
            default:
                break;
        }
        if (!std::isfinite(number)) return padded("0");
        auto whole = numberText(std::trunc(number), std::chars_format::fixed, 0);
        return padded(whole == "-0" ? "0" : std::move(whole));
    }
    template <class Whole>
    std::string operator()(Whole number) const {
        if (placeholder.conversion == 'f') return (*this)(static_cast<double>(number));
        return padded(numberText(number));
    }

private:
    static std::string shortest(double number) {
        return numberText(number,
                          std::abs(number) < 1e15 ? std::chars_format::fixed : std::chars_format::general);
    }
    std::string padded(std::string digits) const {
        if (digits.size() >= placeholder.width) return digits;
        const bool hasSign = placeholder.zeros && digits.starts_with('-');
        digits.insert(hasSign ? 1 : 0, placeholder.width - digits.size(), placeholder.zeros ? '0' : ' ');
        return digits;
    }
};

}  // namespace

std::string formatted(std::string_view format, const std::vector<FormatArgument>& arguments) {
    std::string result;
    std::size_t following = 0;
    while (!format.empty()) {
        const auto plain = std::min(format.find('%'), format.size());
        result += format.substr(0, plain);
        format.remove_prefix(plain);
        if (!take(format, '%')) break;
        if (take(format, '%')) {
            result += '%';
            continue;
        }
        const auto placeholder = takePlaceholder(format);
        if (!placeholder) {
            result += '%';
            continue;
        }
        const auto index = placeholder->position ? *placeholder->position - 1 : following++;
        if (index < arguments.size()) result += std::visit(ArgumentText{*placeholder}, arguments[index]);
    }
    return result;
}

}  // namespace zornic
