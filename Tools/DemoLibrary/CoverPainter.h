#pragma once

#include <string>
#include <vector>

#include "Tools/DemoLibrary/Catalogue.h"

namespace helmo::demo {

using Bytes = std::vector<char>;

/** Draws the covers: square, few large shapes, so that they can be told apart in a list row. */
class CoverPainter {
public:
    /** Width and height in pixels. */
    static constexpr int side = 600;

    /** The cover as PNG or JPEG file contents; throws std::runtime_error if it can't be encoded. */
    static Bytes png(const Cover& cover);
    static Bytes jpeg(const Cover& cover);
};

}  // namespace helmo::demo
