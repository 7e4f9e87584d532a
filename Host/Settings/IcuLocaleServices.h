#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/timezone.h>

#include "Host/Settings/XdgPaths.h"
#include "Platform/Foundation/LocaleServices.h"

namespace helmo {

/** Languages in the driver's order by the environment, region before language: "de-AT", "de", "en". Empty
   when it names none. */
std::vector<std::string> preferredLanguages(
    const XdgPaths::Environment& environment = XdgPaths::processEnvironment);

/** Knows the rules of every language. Thread-safe. */
class IcuLocaleServices final : public zornic::LocaleServices {
public:
    /** `language`: as "de" or "pt-BR"; empty: the system's. `timeZone`: as "Europe/Berlin"; empty: the
     * system's. */
    explicit IcuLocaleServices(const std::string& language = {}, const std::string& timeZone = {});

    std::string lowercased(std::string_view text) const override;
    zornic::Ordering caseInsensitiveCompare(std::string_view left, std::string_view right) const override;
    std::string formattedNumber(double number, zornic::NumberStyle style) const override;
    std::string formattedDate(zornic::Date date, zornic::DateStyle dateStyle,
                              zornic::DateStyle timeStyle) const override;
    std::string timeZoneName() const override;
    int yearOf(zornic::Date date) const override;

private:
    const icu::Locale _locale;
    const std::unique_ptr<const icu::TimeZone> _zone;
    const icu::number::LocalizedNumberFormatter _plain, _decimal, _percent;
    /** A formatter of dates serves one thread at a time. */
    mutable std::mutex _mutex;
    mutable std::map<std::pair<zornic::DateStyle, zornic::DateStyle>, std::unique_ptr<icu::DateFormat>>
        _dates;
};

}  // namespace helmo
