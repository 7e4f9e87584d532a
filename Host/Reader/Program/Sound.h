#pragma once

#include <string>

namespace TagLib {
class File;
}

namespace helmo {

/** What can be seen of a file's sound without decoding it. */
struct Sound {
    /** Seconds; 0 when nobody wrote it down. */
    double duration = 0;
    /** Why there is none; empty when there is sound. */
    std::string problem;
    /** Whether there is less of it than the file says. */
    bool isCutOff = false;
};

Sound soundOf(TagLib::File& file);

}  // namespace helmo
