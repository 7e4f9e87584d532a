#pragma once

#include <filesystem>

#include "Tools/DemoLibrary/Catalogue.h"
#include "Tools/DemoLibrary/CoverPainter.h"

namespace helmo::demo {

/** Writes what players read about a track into its file, in the file format's own kind of tag. */
class TagWriter {
public:
    /** `picture` is a JPEG file's contents, empty for none; throws std::runtime_error if nothing can be
     * saved. */
    static void write(const Album& album, std::size_t index, const Bytes& picture,
                      const std::filesystem::path& file);
};

}  // namespace helmo::demo
