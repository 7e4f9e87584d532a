#include <algorithm>
#include <filesystem>

#include "Fuzz/Require.h"
#include "Host/Library/MediaFiles.h"
#include "Host/Library/PlaylistFileReader.h"
#include "Host/Library/PlaylistText.h"
#include "Host/Library/TagText.h"
#include "Platform/Foundation/TextTools.h"

namespace {

namespace fs = std::filesystem;

/** Reads `text` as every playlist that there is, so that it may name itself. */
helmo::PlaylistFile readAs(const fs::path& file, const std::string& text) {
    const helmo::PlaylistFileReader reader(
        {"/music", "/media/stick"},
        [&](const fs::path&, std::size_t limit) { return std::optional(text.substr(0, limit)); });
    return reader.read(file);
}

void check(const fs::path& file, const std::string& text) {
    const auto list = readAs(file, text);
    require(list.isRead, "a text is read");
    require(!list.name.empty() && helmo::cleanTagText(list.name) == list.name, "the name can be shown");
    require(list.entries.size() <= helmo::mostPlaylistEntries, "no more entries than allowed");
    std::string again;
    bool isOdd = false;
    for (const auto& entry : list.entries) {
        const fs::path path = entry;
        require(path.is_absolute() && path.lexically_normal() == path, "an entry is a normal path");
        require(entry.starts_with("/music/") || entry.starts_with("/media/stick/"),
                "an entry is in a music folder");
        require(helmo::isMusicFile(entry), "an entry is music by its name");
        require(zornic::validUtf8(entry) == entry && helmo::isPlaylistText(entry), "an entry is a text");
        // Lines of a list are shorter, and addresses in percents may hold what is one only when written out.
        isOdd = isOdd || entry.size() > helmo::longestPlaylistLine || entry.find("://") != std::string::npos;
        again += entry + "\n";
    }
    for (const auto& problem : list.problems)
        require(helmo::isPlaylistText(problem) && problem.starts_with("/m"),
                "a problem is a line with its place");
    require(list.problems.size() <= 20, "problems are told in few lines");
    if (!isOdd)
        require(readAs("/music/lists/Road.m3u", again).entries == list.entries,
                "what was read reads the same again");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = textOf(data, size);
    for (const char* name : {"Road.m3u", "Road.pls", "Road.XSPF"})
        check(fs::path("/music/lists") / name, text);
    return 0;
}
