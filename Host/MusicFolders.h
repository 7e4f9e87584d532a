#pragma once

#include <filesystem>
#include <vector>

#include "Host/Settings/CommandLine.h"
#include "Host/Settings/SettingsValues.h"

namespace helmo {

/** Where the music is: the folders of the command line, else those of the settings, else the user's music
   folder when it has music, else the demo library. */
std::vector<std::filesystem::path> chosenMusicFolders(const CommandLine& commandLine,
                                                      const SettingsValues& settings);

}  // namespace helmo
