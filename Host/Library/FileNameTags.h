#pragma once

#include <filesystem>

#include "Host/Library/TagReader.h"

namespace helmo {

/** Fills what a file's tags leave open from where it lies: the title from its name, a leading track number
   taken off
    ("03 - Blue", "1-03 Blue"), and, for a file without any tags, the album from its folder, unless the folder
   is the music folder `root` itself. */
void completeFromFileName(TrackTags& tags, const std::filesystem::path& file,
                          const std::filesystem::path& root);

}  // namespace helmo
