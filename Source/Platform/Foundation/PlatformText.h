#pragma once

#include <string>
#include <string_view>

namespace zornic {

/** The platform's own text for `key` in the driver's language; `fallback` without one. Any thread. */
std::string platformText(std::string_view key, std::string_view fallback = {});

}  // namespace zornic
