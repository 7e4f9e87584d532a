#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/Foundation/Value.h"

namespace helmo {

/** `text` as it may be stored and shown: valid UTF-8, control characters and line breaks as blanks, without
   blanks around, at most 1024 characters. */
std::string cleanTagText(std::string_view text);

/** First number of "7/12", "07", "7 of 12"; 0 without one or when it is out of bounds. */
int firstNumber(std::string_view text);
/** Number behind the slash of "7/12"; 0 without one. */
int numberBehindSlash(std::string_view text);

/** Date of "2004", "2004-05", "2004-05-17..." or "20040517": what is missing or impossible is the first of
   its kind. None when it is no date, or no year that any music is of. */
std::optional<zornic::Date> parsedDate(std::string_view text);

}  // namespace helmo
