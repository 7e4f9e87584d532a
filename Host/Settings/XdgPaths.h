#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace helmo {

/** Where a user's files belong on this system. Touches the disk only for the music folder. */
class XdgPaths {
public:
    /** Value of an environment variable; none when it isn't set. */
    using Environment = std::function<std::optional<std::string>(const std::string& name)>;
    static std::optional<std::string> processEnvironment(const std::string& name);

    explicit XdgPaths(Environment environment = processEnvironment);

    /** Folders of helmo's own, which need not exist. */
    std::filesystem::path config() const { return base("XDG_CONFIG_HOME", ".config") / "helmo"; }
    std::filesystem::path data() const { return base("XDG_DATA_HOME", ".local/share") / "helmo"; }
    std::filesystem::path cache() const { return base("XDG_CACHE_HOME", ".cache") / "helmo"; }
    /** The user's music, where the desktop puts it, or "Music" in the home folder. */
    std::filesystem::path music() const;

private:
    std::filesystem::path base(const char* variable, const char* fallback) const;

    const Environment _environment;
    const std::filesystem::path _home;
};

}  // namespace helmo
