#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zornic {

/** An argument of a format: a text or a number. */
using FormatArgument = std::variant<std::string, std::int64_t, std::uint64_t, double>;

/** Fills a localised format. Understands `%@`, `%d` `%i` `%u` with optional `l`/`ll`, zero flag and width
   (`%02ld`),
    `%f` with precision, `%%`, and positions (`%2$@`). A placeholder without an argument gives nothing; a
   malformed one is kept as it stands. An argument is shown as what it is: a text under `%d` as the text, a
   number under `%@` in plain decimals; only `%d` cuts a fraction off. Widths count characters of numbers and
   end at 64, decimals at 20. */
std::string formatted(std::string_view format, const std::vector<FormatArgument>& arguments);

}  // namespace zornic
