#pragma once

#include <memory>
#include <string>

#include "Platform/Foundation/Bundle.h"

namespace zornic {

/** Identifier under which the host registers the library's resources. */
inline constexpr const char* ZRNHelmoBundleIdentifier = "org.zornicui.resources";

/** The library's resource bundle, looked up once and then kept; none if that look-up failed. Any thread. */
std::shared_ptr<Bundle> ZRNHelmoBundle();
/** The same, as an operation of the bundle type. */
inline std::shared_ptr<Bundle> ZRN_bundle() { return ZRNHelmoBundle(); }

/** The text for `key` in the library's own table; empty without one. */
std::string ZRNLocalizedString(const std::string& key);
/** `text`, or the text for `key` where it is empty. */
std::string ZRNTextOrLocalizedString(std::string text, const char* key);

}  // namespace zornic
