#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Host/Settings/SettingsValues.h"

namespace helmo {

/** What helmo was started with. A value; nullopt: not said, so the settings decide. */
struct CommandLine {
    std::vector<std::filesystem::path> musicFolders;
    bool headless = false;
    bool realtime = false;
    bool fullscreen = false;
    std::optional<ScreenSize> screen;
    std::optional<InteractionMode> mode;
    /** Folder of library and settings, file of the settings, folder of texts and images, music for when there
       is no other. */
    std::optional<std::filesystem::path> data, settings, resources, demo;

    /** What is left to do instead of starting: write `text`, to stderr when the status is not 0, and end. */
    struct Exit {
        int status = 0;
        std::string text;
    };
    /** Reads the arguments without the program's name. */
    static std::variant<CommandLine, Exit> parse(const std::vector<std::string>& arguments,
                                                 const std::string& version);
};

}  // namespace helmo
