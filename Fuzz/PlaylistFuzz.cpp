#include <algorithm>
#include <filesystem>

#include "Fuzz/Require.h"
#include "Host/Library/PlaylistFileReader.h"
#include "Host/Library/TagText.h"
#include "Platform/Foundation/TextTools.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::filesystem::path file = "/music/lists/Road.m3u";
    const auto list = helmo::readPlaylistText(textOf(data, size), file);

    require(!list.name.empty() && helmo::cleanTagText(list.name) == list.name, "the name can be shown");
    require(list.entries.size() <= helmo::mostPlaylistEntries, "no more entries than allowed");
    std::string again;
    bool isLong = false;
    for (const auto& entry : list.entries) {
        const std::string text = entry.string();
        require(entry.is_absolute() && entry.lexically_normal() == entry, "an entry is a normal path");
        require(zornic::validUtf8(text) == text && text.find('\0') == std::string::npos,
                "an entry is a text");
        isLong = isLong || text.size() > 4096;
        again += text + "\n";
    }
    for (const auto& problem : list.problems)
        require(isOneLine(problem) && problem.starts_with(file.string() + ":"),
                "a problem is a line with its place");
    if (!isLong)
        require(helmo::readPlaylistText(again, file).entries == list.entries,
                "what was read reads the same again");
    return 0;
}
