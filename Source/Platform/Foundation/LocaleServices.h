#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Foundation/Value.h"

namespace zornic {

enum class DateStyle { None = 0, Short = 1, Medium = 2, Long = 3, Full = 4 };
enum class NumberStyle { None = 0, Decimal = 1, Percent = 3 };
enum class Ordering { Ascending = -1, Same = 0, Descending = 1 };

/** What depends on the driver's language and region. The host installs one with full knowledge of languages;
   the default knows plain English. Thread-safe. */
class LocaleServices {
public:
    virtual ~LocaleServices() = default;

    static LocaleServices& current();
    /** Replaces the default; none restores it. Before other threads start. */
    static void install(std::unique_ptr<LocaleServices> services);

    virtual std::string lowercased(std::string_view text) const;
    /** Order of the two texts without their cases, code point by code point. */
    virtual Ordering caseInsensitiveCompare(std::string_view left, std::string_view right) const;
    /** None: a whole number without grouping; Decimal: grouped, up to three decimals; Percent: 1 is "100%".
     */
    virtual std::string formattedNumber(double number, NumberStyle style) const;
    /** Day and time in the device's time zone; a part whose style is None is left out. */
    virtual std::string formattedDate(Date date, DateStyle dateStyle, DateStyle timeStyle) const;
    /** Name of the device's time zone, as "Europe/Berlin"; "UTC" when unknown. */
    virtual std::string timeZoneName() const;
    /** Calendar year of a date in the device's time zone. */
    virtual int yearOf(Date date) const;
};

/** Formats dates in two chosen styles. A value. */
class DateFormatter {
public:
    DateStyle dateStyle = DateStyle::None;
    DateStyle timeStyle = DateStyle::None;
    /** Text of a date; none for no date. */
    std::optional<std::string> stringFromDate(const std::optional<Date>& date) const;
};

/** Formats numbers in one style. A value. */
class NumberFormatter {
public:
    NumberStyle style = NumberStyle::None;
    std::string stringFromNumber(double number) const;
};

}  // namespace zornic
