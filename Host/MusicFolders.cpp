#include "Host/MusicFolders.h"

#include "Host/Library/MediaFiles.h"
#include "Host/Settings/XdgPaths.h"

namespace helmo {
namespace {

/** Entries looked at before a folder counts as one with music: whoever has that many files there means it. */
constexpr int entriesToLookAt = 20'000;

bool holdsMusic(const std::filesystem::path& folder) {
    namespace fs = std::filesystem;
    std::error_code error;
    auto entry =
        fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied, error);
    int left = entriesToLookAt;
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
        if (isMusicFile(entry->path().native()) || --left == 0) return true;
    return false;
}

}  // namespace

std::vector<std::filesystem::path> chosenMusicFolders(const CommandLine& commandLine,
                                                      const SettingsValues& settings) {
    if (!commandLine.musicFolders.empty()) return commandLine.musicFolders;
    if (!settings.musicFolders.empty()) return settings.musicFolders;
    const std::filesystem::path usual = XdgPaths().music();
    if (!commandLine.demo || holdsMusic(usual)) return {usual};
    return {*commandLine.demo};
}

}  // namespace helmo
