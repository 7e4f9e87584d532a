#pragma once

#include <iosfwd>
#include <vector>

#include "Host/Reader/Program/ChapterList.h"

namespace helmo {

/** What an MP4 file holds beside sound and tags. */
struct Mp4Movie {
    /** Whether it has moving pictures; those that illustrate chapters don't count. */
    bool hasVideo = false;
    /** Those of its track of chapters, else those of its list of chapters. In the order of the file. */
    std::vector<FoundChapter> chapters;

    /** Of whatever `file` holds; nothing where it is no such file or damaged. */
    static Mp4Movie read(std::istream& file);
};

}  // namespace helmo
