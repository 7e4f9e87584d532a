#include "Platform/Foundation/TextTools.h"

namespace zornic {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isScalar(char32_t point) { return point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF); }

struct Decoded {
    char32_t point;
    std::size_t length;
};

/** The character at the start of non-empty text; a first byte that starts none is U+FFFD of length 1. */
Decoded firstCharacter(std::string_view text) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {replacement, 1};
    char32_t point = lead & (0x7FU >> length);
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xC0U) != 0x80U) return {replacement, 1};
        point = point << 6 | (byte(at) & 0x3FU);
    }
    // Forms longer than need be would let one text stand in two spellings.
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (point < smallest[length] || !isScalar(point)) return {replacement, 1};
    return {point, length};
}

void append(std::string& text, char32_t point) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80U | (point >> shift & 0x3FU)); };
    if (!isScalar(point)) point = replacement;
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0U | point >> 6);
        tail(0);
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0U | point >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | point >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

}  // namespace

std::string replacingAll(std::string text, std::string_view what, std::string_view with) {
    if (what.empty() || text.find(what) == std::string::npos) return text;
    std::string replaced;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(what, from)) != std::string::npos; from = at + what.size())
        replaced.append(text, from, at - from).append(with);
    return replaced.append(text, from);
}

std::vector<std::string> splitted(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t at; (at = text.find(separator)) != std::string_view::npos; text.remove_prefix(at + 1))
        parts.emplace_back(text.substr(0, at));
    parts.emplace_back(text);
    return parts;
}

std::string joined(const std::vector<std::string>& parts, std::string_view separator) {
    std::string text;
    for (const auto& part : parts) {
        if (&part != &parts.front()) text += separator;
        text += part;
    }
    return text;
}

std::u32string decodedUtf8(std::string_view text) {
    std::u32string points;
    points.reserve(text.size());
    while (!text.empty()) {
        const auto [point, length] = firstCharacter(text);
        points += point;
        text.remove_prefix(length);
    }
    return points;
}

std::string encodedUtf8(std::u32string_view text) {
    std::string encoded;
    encoded.reserve(text.size());
    for (const char32_t point : text) append(encoded, point);
    return encoded;
}

std::string validUtf8(std::string_view text) { return encodedUtf8(decodedUtf8(text)); }

}  // namespace zornic
