#pragma once

#include <map>
#include <optional>
#include <string>

namespace helmo {

/** Values as they are written in a settings file, by the setting's name. */
using WrittenSettings = std::map<std::string, std::string>;

/** Whether `text` is a settings file without a slip. */
bool isWholeSettingsText(const std::string& text);
/** `text`, a whole settings file, with the given settings changed or added. Everything else stays as it is,
   comments and unknown settings included; none where it is so written that it can't be changed. */
std::optional<std::string> withSettings(std::string text, const WrittenSettings& settings);

}  // namespace helmo
