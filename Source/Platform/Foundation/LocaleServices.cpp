#include "Platform/Foundation/LocaleServices.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "Platform/Foundation/StringFormat.h"
#include "Platform/Foundation/TextTools.h"

namespace zornic {

namespace {

/** Capitals of a script that has cases: each `step`-th from `first` to `last` is `distance` before its small
 * letter. */
struct Capitals {
    char32_t first;
    char32_t last;
    char32_t step;
    char32_t distance;
};

constexpr Capitals capitals[] = {
    {'A', 'Z', 1, 32},       {0x00C0, 0x00D6, 1, 32}, {0x00D8, 0x00DE, 1, 32}, {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},  {0x0139, 0x0147, 2, 1},  {0x014A, 0x0176, 2, 1},  {0x0179, 0x017D, 2, 1},
    {0x0386, 0x0386, 1, 38}, {0x0388, 0x038A, 1, 37}, {0x038C, 0x038C, 1, 64}, {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32}, {0x03A3, 0x03AB, 1, 32}, {0x0400, 0x040F, 1, 80}, {0x0410, 0x042F, 1, 32},
    {0x0460, 0x0480, 2, 1},  {0x048A, 0x04BE, 2, 1},  {0x04C0, 0x04C0, 1, 15}, {0x04C1, 0x04CD, 2, 1},
    {0x04D0, 0x052E, 2, 1},  {0x1E00, 0x1E94, 2, 1},  {0x1EA0, 0x1EFE, 2, 1},  {0xFF21, 0xFF3A, 1, 32},
};

char32_t lowercasedPoint(char32_t point) {
    if (point == 0x0130) return 'i';
    if (point == 0x0178) return 0x00FF;
    if (point == 0x1E9E) return 0x00DF;
    for (const auto& [first, last, step, distance] : capitals)
        if (point >= first && point <= last && (point - first) % step == 0) return point + distance;
    return point;
}

/** Small letters that are the same but for their place in the word become one. */
char32_t foldedPoint(char32_t point) {
    if (point == 0x03C2) return 0x03C3;
    if (point == 0x017F) return 's';
    return lowercasedPoint(point);
}

std::string fixed(double number, int decimals) {
    char buffer[512];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, decimals).ptr;
    return {buffer, end};
}

/** A comma before each group of three digits, no zeros at the end of the decimals. */
std::string grouped(std::string digits) {
    const auto point = std::min(digits.find('.'), digits.size());
    if (point < digits.size()) digits.resize(std::max(point, digits.find_last_not_of('0') + 1));
    if (digits.ends_with('.')) digits.pop_back();
    const std::size_t start = digits.starts_with('-') ? 1 : 0;
    for (auto at = point; at > start + 3; at -= 3) digits.insert(at - 3, ",");
    return digits;
}

std::tm localTime(Date date) {
    const std::time_t time = std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
    std::tm parts{};
    localtime_r(&time, &parts);
    return parts;
}

constexpr const char* months[] = {"January", "February", "March",     "April",   "May",      "June",
                                  "July",    "August",   "September", "October", "November", "December"};
constexpr const char* days[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

std::string dayText(const std::tm& parts, DateStyle style) {
    const std::string month = months[parts.tm_mon];
    const std::int64_t day = parts.tm_mday;
    const std::int64_t year = parts.tm_year + std::int64_t{1900};
    switch (style) {
        case DateStyle::None:
            return {};
        case DateStyle::Short:
            return formatted("%d/%d/%02d", {parts.tm_mon + std::int64_t{1}, day, (year % 100 + 100) % 100});
        case DateStyle::Medium:
            return formatted("%@ %d, %d", {month.substr(0, 3), day, year});
        case DateStyle::Long:
            return formatted("%@ %d, %d", {month, day, year});
        case DateStyle::Full:
            break;
    }
    return formatted("%@, %@ %d, %d", {std::string(days[parts.tm_wday]), month, day, year});
}

std::string timeText(const std::tm& parts, DateStyle style) {
    if (style == DateStyle::None) return {};
    const std::int64_t hour = (parts.tm_hour + 11) % 12 + 1;
    const std::int64_t minute = parts.tm_min;
    const std::int64_t second = parts.tm_sec;
    const std::string half = parts.tm_hour < 12 ? "AM" : "PM";
    if (style == DateStyle::Short) return formatted("%d:%02d %@", {hour, minute, half});
    const auto time = formatted("%d:%02d:%02d %@", {hour, minute, second, half});
    return style == DateStyle::Medium ? time : time + " " + (parts.tm_zone ? parts.tm_zone : "UTC");
}

/** What follows the folder of time zones in a path, "Europe/Berlin"; empty when the path leads elsewhere. */
std::string zoneOfPath(std::string_view path) {
    constexpr std::string_view folder = "zoneinfo/";
    const auto found = path.find(folder);
    return found == std::string_view::npos ? std::string() : std::string(path.substr(found + folder.size()));
}

std::unique_ptr<LocaleServices>& installed() {
    static auto& services = *new std::unique_ptr<LocaleServices>(std::make_unique<LocaleServices>());
    return services;
}

}  // namespace

LocaleServices& LocaleServices::current() { return *installed(); }

void LocaleServices::install(std::unique_ptr<LocaleServices> services) {
    installed() = services ? std::move(services) : std::make_unique<LocaleServices>();
}

std::string LocaleServices::lowercased(std::string_view text) const {
    auto points = decodedUtf8(text);
    for (auto& point : points) point = lowercasedPoint(point);
    return encodedUtf8(points);
}

Ordering LocaleServices::caseInsensitiveCompare(std::string_view left, std::string_view right) const {
    auto leftPoints = decodedUtf8(left);
    auto rightPoints = decodedUtf8(right);
    for (auto& point : leftPoints) point = foldedPoint(point);
    for (auto& point : rightPoints) point = foldedPoint(point);
    if (leftPoints == rightPoints) return Ordering::Same;
    return leftPoints < rightPoints ? Ordering::Ascending : Ordering::Descending;
}

std::string LocaleServices::formattedNumber(double number, NumberStyle style) const {
    const bool isPercent = style == NumberStyle::Percent;
    const double shown = isPercent ? number * 100 : number;
    if (std::isnan(shown)) return "NaN";
    std::string text = shown < 0 ? "-∞" : "∞";
    if (std::isfinite(shown)) {
        const auto digits = fixed(shown, style == NumberStyle::Decimal ? 3 : 0);
        text = style == NumberStyle::None ? digits : grouped(digits);
    }
    if (text == "-0") text = "0";
    return isPercent ? text + "%" : text;
}

std::string LocaleServices::formattedDate(Date date, DateStyle dateStyle, DateStyle timeStyle) const {
    const auto parts = localTime(date);
    const auto day = dayText(parts, dateStyle);
    const auto time = timeText(parts, timeStyle);
    if (day.empty() || time.empty()) return day + time;
    return day + (dateStyle >= DateStyle::Long ? " at " : ", ") + time;
}

std::string LocaleServices::timeZoneName() const {
    std::filesystem::path file = "/etc/localtime";
    if (const char* variable = std::getenv("TZ"); variable && *variable) {
        const std::string_view zone(*variable == ':' ? variable + 1 : variable);
        if (!zone.starts_with('/')) return std::string(zone);
        file = zone;
    }
    std::error_code failure;
    const auto link = std::filesystem::read_symlink(file, failure);
    const auto zone = zoneOfPath(failure ? file.string() : link.string());
    return zone.empty() ? "UTC" : zone;
}

int LocaleServices::yearOf(Date date) const { return localTime(date).tm_year + 1900; }

std::optional<std::string> DateFormatter::stringFromDate(const std::optional<Date>& date) const {
    if (!date) return std::nullopt;
    return LocaleServices::current().formattedDate(*date, dateStyle, timeStyle);
}

std::string NumberFormatter::stringFromNumber(double number) const {
    return LocaleServices::current().formattedNumber(number, style);
}

}  // namespace zornic
