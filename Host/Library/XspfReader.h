#pragma once

#include <string_view>

#include "Host/Library/PlaylistText.h"

namespace helmo {

/** Reads a playlist in XML: its title, and of each track the first location that may be a file. Document
   types, in which bombs are built, end the reading, and so does what is no XML; what was read so far counts.
   `isCut`: the end is missing, which is said elsewhere. */
PlaylistText parseXspf(std::string_view bytes, bool isCut, const PlaylistFaultHandler& fault);

}  // namespace helmo
