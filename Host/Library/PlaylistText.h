#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace helmo {

/** What the text of a playlist says, as it is written there. */
struct PlaylistText {
    struct Location {
        std::string text;
        std::uint32_t line = 0;
        /** Whether blanks and the like are written as "%20". */
        bool isUri = false;
    };
    /** As it calls itself; empty when it doesn't. */
    std::string name;
    /** In order of play. */
    std::vector<Location> locations;
};

/** Told of what is left out: where and why. */
using PlaylistFaultHandler = std::function<void(std::uint32_t line, const std::string& reason)>;

/** The entries of one playlist at most. */
inline constexpr std::size_t mostPlaylistEntries = 100'000;
/** Of a line, or of what stands between two tags; bytes. */
inline constexpr std::size_t longestPlaylistLine = 4096;

/** Whether there is a text without control characters; bytes of a picture, say, hold some. */
bool isPlaylistText(std::string_view text);
/** Whether all of it is UTF-8. */
bool isUtf8(std::string_view text);
/** Text as UTF-8: what isn't is taken for Latin-1, as older programs wrote it. */
std::string asUtf8(std::string text);

/** A line to each file, "#PLAYLIST:" for the name; UTF-8, UTF-16 with a byte order mark, or Latin-1. */
PlaylistText parseM3u(std::string_view bytes, const PlaylistFaultHandler& fault);
/** "File1=" and so on in the section "[playlist]", in the order of their numbers. */
PlaylistText parsePls(std::string_view bytes, const PlaylistFaultHandler& fault);

}  // namespace helmo
