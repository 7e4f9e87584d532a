#include "Host/Settings/XdgPaths.h"

#include <cstdlib>
#include <fstream>
#include <pwd.h>
#include <string_view>
#include <unistd.h>

namespace helmo {

namespace {

std::filesystem::path homeOf(const XdgPaths::Environment& environment) {
    if (const auto home = environment("HOME"); home && home->starts_with('/')) return *home;
    passwd user{};
    passwd* found = nullptr;
    char texts[4096];
    if (::getpwuid_r(::getuid(), &user, texts, sizeof texts, &found) == 0 && found && found->pw_dir)
        return found->pw_dir;
    return "/";
}

/** What stands between the quotes at the start of `text`, without the shell's backslashes. */
std::string unquoted(std::string_view text) {
    std::string result;
    if (!text.starts_with('"')) return result;
    for (std::size_t i = 1; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        result += text[i];
    }
    return result;
}

}  // namespace

std::optional<std::string> XdgPaths::processEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

XdgPaths::XdgPaths(Environment environment)
    : _environment(std::move(environment)), _home(homeOf(_environment)) {}

std::filesystem::path XdgPaths::base(const char* variable, const char* fallback) const {
    // A relative path is invalid here and counts as none.
    if (const auto value = _environment(variable); value && value->starts_with('/')) return *value;
    return _home / fallback;
}

std::filesystem::path XdgPaths::music() const {
    std::ifstream file(base("XDG_CONFIG_HOME", ".config") / "user-dirs.dirs");
    std::filesystem::path result = _home / "Music";
    constexpr std::string_view key = "XDG_MUSIC_DIR=";
    constexpr std::string_view home = "$HOME";
    for (std::string line; std::getline(file, line);) {
        line.erase(0, line.find_first_not_of(" \t"));
        if (!line.starts_with(key)) continue;
        auto value = unquoted(std::string_view(line).substr(key.size()));
        if (value.starts_with(home)) value.replace(0, home.size(), _home.string());
        const auto folder = std::filesystem::path(value).lexically_normal();
        // The home folder itself means that there is no folder for music.
        if (folder.is_absolute() && folder / "" != (_home / "").lexically_normal()) result = folder;
    }
    return result;
}

}  // namespace helmo
