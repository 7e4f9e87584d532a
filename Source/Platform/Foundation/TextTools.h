#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zornic {

/** Every `what` in `text` replaced by `with`, from left to right; an empty `what` is found nowhere. */
std::string replacingAll(std::string text, std::string_view what, std::string_view with);
/** The parts between separators, empty ones included: one part more than there are separators. */
std::vector<std::string> splitted(std::string_view text, char separator);
std::string joined(const std::vector<std::string>& parts, std::string_view separator);
/** Code points of UTF-8 text; a malformed byte becomes U+FFFD. */
std::u32string decodedUtf8(std::string_view text);
/** UTF-8 of code points; what is no character's number becomes U+FFFD. */
std::string encodedUtf8(std::u32string_view text);
/** `text` with every malformed byte replaced by U+FFFD. */
std::string validUtf8(std::string_view text);

}  // namespace zornic
