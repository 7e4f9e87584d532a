#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "Host/Library/PlaylistText.h"

namespace helmo {

/** Where a playlist lies. */
struct PlaylistPlace {
    /** Of the playlist: what it names is in relation to it. */
    std::filesystem::path folder;
    /** The music folder that the playlist is in: stands for a drive such as "D:". */
    std::filesystem::path root;
};

/** Whether it is an address on a network, or of something that is no file at all. */
bool isElsewhere(const PlaylistText::Location& location);

/** The file that a location names, in UTF-8: absolute, without "..", whether or not it exists. None for what
   is elsewhere or is no path. */
std::optional<std::string> pathOfLocation(const PlaylistText::Location& location, const PlaylistPlace& place);

}  // namespace helmo
