#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace helmo {

/** What a playlist file lists. */
struct PlaylistFile {
    /** As it calls itself, else the file's name without extension. */
    std::string name;
    /** Files in order, absolute and without "..", whether or not they exist. */
    std::vector<std::filesystem::path> entries;
    /** What was left out and why, each with file and line. */
    std::vector<std::string> problems;
};

/** The entries of one list at most. */
inline constexpr std::size_t mostPlaylistEntries = 10'000;

/** Reads an M3U or M3U8 file: relative and absolute paths with either slash, in UTF-8 or Latin-1. Addresses
   on a network are left out silently. At most 4 MB, 10,000 entries, 4096 bytes a line. */
PlaylistFile readPlaylistFile(const std::filesystem::path& file);
/** Reads the text of such a file, which need not exist: `file`, absolute, is for its name and place. */
PlaylistFile readPlaylistText(std::string_view text, const std::filesystem::path& file);

}  // namespace helmo
