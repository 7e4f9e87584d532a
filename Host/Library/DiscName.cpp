#include "Host/Library/DiscName.h"

#include <algorithm>
#include <initializer_list>

#include "Host/Library/TagText.h"

namespace helmo {

namespace {

constexpr std::string_view blanks = " .-_#";
constexpr std::size_t mostDigits = 2;

bool isDigit(char character) { return character >= '0' && character <= '9'; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
bool isLetter(char c) {
    return static_cast<unsigned char>(c) >= 0x80 || isDigit(c) || (lower(c) >= 'a' && lower(c) <= 'z');
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() &&
           std::ranges::equal(text.substr(text.size() - end.size()), end, {}, lower);
}

void trimEnd(std::string_view& text, std::string_view characters) {
    text = text.substr(0, text.find_last_not_of(characters) + 1);
}

/** Takes a number of one or two digits off the end; 0 without one. */
int takeNumber(std::string_view& text) {
    const auto begin = std::find_if_not(text.rbegin(), text.rend(), isDigit).base() - text.begin();
    const std::string_view digits = text.substr(static_cast<std::size_t>(begin));
    if (digits.empty() || digits.size() > mostDigits) return 0;
    text.remove_suffix(digits.size());
    return firstNumber(digits);
}

/** Takes one of `words` off the end, when it stands by itself. */
bool takeWord(std::string_view& text, std::initializer_list<std::string_view> words) {
    for (const std::string_view word : words) {
        if (!endsWith(text, word)) continue;
        const std::string_view rest = text.substr(0, text.size() - word.size());
        if (!rest.empty() && isLetter(rest.back())) return false;
        text = rest;
        return true;
    }
    return false;
}

/** Takes "CD 2" or "Disc 1 of 2" off the end; the disc, 0 without one. */
int takeDisc(std::string_view& text, std::initializer_list<std::string_view> words = {"disc", "disk", "cd"}) {
    std::string_view rest = text;
    int disc = takeNumber(rest);
    if (endsWith(rest, " of ")) {
        rest.remove_suffix(4);
        disc = takeNumber(rest);
    }
    if (disc == 0) return 0;
    trimEnd(rest, blanks);
    if (!takeWord(rest, words)) return 0;
    text = rest;
    return disc;
}

/** Takes a disc in brackets off the end. */
int takeBracketed(std::string_view& text) {
    std::string_view rest = text;
    trimEnd(rest, " ");
    if (rest.empty()) return 0;
    const char opening = rest.back() == ')' ? '(' : rest.back() == ']' ? '[' : '\0';
    if (opening == '\0') return 0;
    rest.remove_suffix(1);
    const auto at = rest.rfind(opening);
    if (at == std::string_view::npos) return 0;
    std::string_view inside = rest.substr(at + 1);
    trimEnd(inside, " ");
    const int disc = takeDisc(inside);
    if (disc == 0 || inside.find_first_not_of(' ') != std::string_view::npos) return 0;
    text = rest.substr(0, at);
    return disc;
}

}  // namespace

DiscName DiscName::ofTitle(std::string_view title) {
    std::string_view rest = title;
    const int disc = takeBracketed(rest);
    trimEnd(rest, " ");
    if (disc == 0 || rest.empty()) return {0, std::string(title)};
    return {disc, std::string(rest)};
}

DiscName DiscName::ofFolder(std::string_view name) {
    std::string_view rest = name;
    int disc = takeBracketed(rest);
    if (disc == 0) disc = takeDisc(rest);
    // "Greatest Hits Vol. 2" is an album of its own.
    if (std::string_view volume = name; disc == 0 && (disc = takeDisc(volume, {"vol"})) != 0) {
        if (!volume.empty()) disc = 0;
        rest = volume;
    }
    if (disc == 0) return {0, std::string(name)};
    trimEnd(rest, " -_,.:");
    return {disc, std::string(rest)};
}

}  // namespace helmo
