#pragma once

#include <filesystem>

#include "Host/Library/TagReader.h"

namespace helmo {

/** Where an album lies: the folder itself, or what the folders of its discs have in common. */
struct AlbumFolder {
    /** "Nightfall" for "Nightfall/CD 2" and for "Nightfall (CD 2)"; there may be no such folder. */
    std::filesystem::path path;
    /** 0 when the folder is none of a disc. */
    int disc = 0;

    static AlbumFolder of(const std::filesystem::path& folder);
};

/** Settles what disc a file is of. What its title has in brackets goes, "Nightfall (Disc 1)" being an album
   of several discs. The number of a disc's folder counts where the tags name none, or the first disc, as
   programs write that copied each disc as if it were the only one. `discOfFolder`: 0 without one. */
void completeDisc(TrackTags& tags, int discOfFolder);

}  // namespace helmo
