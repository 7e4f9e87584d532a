#pragma once

#include <functional>
#include <span>
#include <string>

#include <toml++/toml.h>

#include "Host/Settings/SettingsValues.h"

namespace helmo {

/** Told of a wrong value: where it stands and what was expected there instead. */
using WrongSetting = std::function<void(const toml::node& node, const std::string& expected)>;

/** One setting as it stands in the settings file. */
struct SettingsKey {
    const char* name;
    /** Takes the file's value over; a wrong one is reported and leaves what `values` has. */
    void (*read)(const toml::node& node, SettingsValues& values, const WrongSetting& wrong);
    /** The value as it is written in the file. */
    std::string (*text)(const SettingsValues& values);
};

/** A value as people write it: on one line, in double quotes where it is a text. */
std::string writtenValue(const toml::node& node);
/** Every setting, in the order of a new file. */
std::span<const SettingsKey> settingsKeys();

}  // namespace helmo
