#include "Host/Library/TagText.h"

#include <algorithm>
#include <charconv>

#include "Platform/Foundation/TextTools.h"

namespace helmo {

namespace {

constexpr std::size_t maximumCharacters = 1024;
constexpr int maximumNumber = 99999;
/** What lies outside stands for "none": 0, 1, 9999. */
constexpr int earliestYear = 1000, latestYear = 2999;

bool isControl(char32_t character) {
    return character < 0x20 || (character >= 0x7f && character < 0xa0) || character == 0x2028 ||
           character == 0x2029;
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/** The number of exactly `digits` digits at `at`; none when they aren't digits. */
std::optional<int> digitsAt(std::string_view text, std::size_t at, std::size_t digits) {
    if (at + digits > text.size()) return std::nullopt;
    int number = 0;
    for (const char character : text.substr(at, digits)) {
        if (!isDigit(character)) return std::nullopt;
        number = number * 10 + (character - '0');
    }
    return number;
}

}  // namespace

std::string cleanTagText(std::string_view text) {
    // A character takes at most four bytes: what lies behind that many is never looked at.
    std::u32string characters = zornic::decodedUtf8(text.substr(0, maximumCharacters * 4));
    for (char32_t& character : characters)
        if (isControl(character)) character = U' ';
    const auto first = characters.find_first_not_of(U" \u00a0");
    if (first == std::u32string::npos) return {};
    characters = characters.substr(first, maximumCharacters);
    characters.resize(characters.find_last_not_of(U" \u00a0") + 1);
    return zornic::encodedUtf8(characters);
}

int firstNumber(std::string_view text) {
    while (!text.empty() && !isDigit(text.front())) text.remove_prefix(1);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && number <= maximumNumber ? number : 0;
}

int numberBehindSlash(std::string_view text) {
    const auto slash = text.find('/');
    return slash == std::string_view::npos ? 0 : firstNumber(text.substr(slash + 1));
}

std::optional<zornic::Date> parsedDate(std::string_view text) {
    using namespace std::chrono;
    const auto digits = std::min(text.find_first_not_of("0123456789"), text.size());
    const auto yearNumber = digitsAt(text, 0, 4);
    if (!yearNumber || *yearNumber < earliestYear || *yearNumber > latestYear) return std::nullopt;
    if (digits != 4 && digits != 8) return std::nullopt;
    const bool isCompact = digits == 8;
    const std::size_t monthAt = isCompact ? 4 : 5, dayAt = isCompact ? 6 : 8;
    const bool hasMonth = isCompact || (text.size() > 4 && text[4] == '-');
    const bool hasDay = isCompact || (hasMonth && text.size() > 7 && text[7] == '-');
    const int monthNumber = hasMonth ? digitsAt(text, monthAt, 2).value_or(1) : 1;
    const int dayNumber = hasDay ? digitsAt(text, dayAt, 2).value_or(1) : 1;
    year_month_day date{year(*yearNumber), month(static_cast<unsigned>(monthNumber)),
                        day(static_cast<unsigned>(dayNumber))};
    if (!date.ok()) date = year_month_day{year(*yearNumber), month(1), day(1)};
    // In the middle of the day, so that it is that day in every time zone.
    return zornic::Date(sys_days(date)) + hours(12);
}

}  // namespace helmo
