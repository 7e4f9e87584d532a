#pragma once

#include <string>

namespace TagLib {
class File;
}

namespace helmo {

struct EmbeddedPicture {
    std::string bytes;
    /** A picture is there, but too large to take. */
    bool isTooLarge = false;
};

/** The picture inside a file, whatever its kind: the front cover, else the first. */
EmbeddedPicture embeddedPicture(TagLib::File& file);

}  // namespace helmo
