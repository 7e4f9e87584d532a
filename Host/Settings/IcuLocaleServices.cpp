#include "Host/Settings/IcuLocaleServices.h"

#include <algorithm>
#include <chrono>

#include <unicode/unistr.h>

#include "Platform/Foundation/TextTools.h"

namespace helmo {

using icu::number::NumberFormatter;
using icu::number::Precision;
using icu::number::Scale;
using zornic::Date;
using zornic::DateStyle;
using zornic::NumberStyle;
using zornic::Ordering;

namespace {

icu::UnicodeString unicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    return text.toUTF8String(result);
}

icu::Locale localeFor(const std::string& language) {
    if (!language.empty()) return icu::Locale(language.c_str());
    const auto languages = preferredLanguages();
    return icu::Locale(languages.empty() ? "en" : languages.front().c_str());
}

icu::TimeZone* zoneFor(const std::string& name) {
    return name.empty() ? icu::TimeZone::detectHostTimeZone() : icu::TimeZone::createTimeZone(unicode(name));
}

icu::DateFormat::EStyle icuStyle(DateStyle style) {
    switch (style) {
        case DateStyle::Short:
            return icu::DateFormat::kShort;
        case DateStyle::Medium:
            return icu::DateFormat::kMedium;
        case DateStyle::Long:
            return icu::DateFormat::kLong;
        case DateStyle::Full:
            return icu::DateFormat::kFull;
        case DateStyle::None:
            break;
    }
    return icu::DateFormat::kNone;
}

double milliseconds(Date date) {
    return std::chrono::duration<double, std::milli>(date.time_since_epoch()).count();
}

/** "de_AT.UTF-8@euro" as "de-AT"; empty for the language of machines. */
std::string languageOf(std::string locale) {
    locale.resize(std::min(locale.find_first_of(".@"), locale.size()));
    if (locale == "C" || locale == "POSIX") return {};
    std::ranges::replace(locale, '_', '-');
    return locale;
}

}  // namespace

std::vector<std::string> preferredLanguages(const XdgPaths::Environment& environment) {
    std::string locale;
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (locale.empty()) locale = environment(variable).value_or("");
    std::vector<std::string> named;
    // The list of languages counts only where a language is set at all.
    if (!languageOf(locale).empty()) named = zornic::splitted(environment("LANGUAGE").value_or(""), ':');
    named.push_back(locale);

    std::vector<std::string> languages;
    const auto add = [&](const std::string& language) {
        if (!language.empty() && std::ranges::find(languages, language) == languages.end())
            languages.push_back(language);
    };
    for (const auto& name : named) {
        const auto language = languageOf(name);
        add(language);
        add(language.substr(0, language.find('-')));
    }
    return languages;
}

IcuLocaleServices::IcuLocaleServices(const std::string& language, const std::string& timeZone)
    : _locale(localeFor(language)),
      _zone(zoneFor(timeZone)),
      _plain(
          NumberFormatter::withLocale(_locale).precision(Precision::integer()).grouping(UNUM_GROUPING_OFF)),
      _decimal(NumberFormatter::withLocale(_locale).precision(Precision::maxFraction(3))),
      _percent(NumberFormatter::withLocale(_locale)
                   .unit(icu::NoUnit::percent())
                   .scale(Scale::powerOfTen(2))
                   .precision(Precision::integer())) {}

std::string IcuLocaleServices::lowercased(std::string_view text) const {
    return utf8(unicode(text).toLower(_locale));
}

Ordering IcuLocaleServices::caseInsensitiveCompare(std::string_view left, std::string_view right) const {
    const auto order = unicode(left).caseCompare(unicode(right), U_COMPARE_CODE_POINT_ORDER);
    return order < 0 ? Ordering::Ascending : order > 0 ? Ordering::Descending : Ordering::Same;
}

std::string IcuLocaleServices::formattedNumber(double number, NumberStyle style) const {
    const auto& formatter = style == NumberStyle::None      ? _plain
                            : style == NumberStyle::Percent ? _percent
                                                            : _decimal;
    UErrorCode status = U_ZERO_ERROR;
    const auto text = formatter.formatDouble(number, status).toString(status);
    return U_SUCCESS(status) ? utf8(text) : LocaleServices::formattedNumber(number, style);
}

std::string IcuLocaleServices::formattedDate(Date date, DateStyle dateStyle, DateStyle timeStyle) const {
    if (dateStyle == DateStyle::None && timeStyle == DateStyle::None) return {};
    std::lock_guard lock(_mutex);
    auto& format = _dates[{dateStyle, timeStyle}];
    if (!format) {
        format.reset(
            icu::DateFormat::createDateTimeInstance(icuStyle(dateStyle), icuStyle(timeStyle), _locale));
        if (!format) return LocaleServices::formattedDate(date, dateStyle, timeStyle);
        format->setTimeZone(*_zone);
    }
    icu::UnicodeString text;
    return utf8(format->format(milliseconds(date), text));
}

std::string IcuLocaleServices::timeZoneName() const {
    icu::UnicodeString name;
    _zone->getID(name);
    return *_zone == icu::TimeZone::getUnknown() ? "UTC" : utf8(name);
}

int IcuLocaleServices::yearOf(Date date) const {
    std::int32_t raw = 0, saving = 0;
    UErrorCode status = U_ZERO_ERROR;
    _zone->getOffset(milliseconds(date), false, raw, saving, status);
    const auto local = date + std::chrono::milliseconds(raw + saving);
    return static_cast<int>(std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(local)).year());
}

}  // namespace helmo
