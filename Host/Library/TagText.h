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

/** Date of "2004", "2004-05" or "2004-05-17...": missing parts are the first of their kind. None when it is
 * no date. */
std::optional<zornic::Date> parsedDate(std::string_view text);

}  // namespace helmo
