#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Host/Settings/SettingsValues.h"

namespace helmo {

/** Something in a settings file that does not hold. A value. */
struct SettingsProblem {
    std::filesystem::path file;
    /** From 1; 0: the file as a whole. */
    std::size_t line = 0;
    std::string message;
    /** One line: "settings.toml:3: mode: found "fast", expected ...". */
    std::string text() const;
};

struct SettingsReading {
    SettingsValues values;
    std::vector<SettingsProblem> problems;
};

/** A settings file longer than this (bytes) is none. */
inline constexpr std::uintmax_t longestSettingsFile = 1 << 20;

/** Content of a file; nullopt when it can't be read, with the reason in `problem`. */
std::optional<std::string> settingsTextOf(const std::filesystem::path& file, std::string& problem);
/** Reads what can be read; what is wrong or missing keeps its default. No file at all is no problem. */
SettingsReading readSettings(const std::filesystem::path& file);
/** The same from a file's text; `file` is for the problems. */
SettingsReading readSettingsText(const std::string& text, const std::filesystem::path& file);

}  // namespace helmo
