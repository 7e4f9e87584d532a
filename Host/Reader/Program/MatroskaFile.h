#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "Host/Reader/Program/ChapterList.h"

namespace helmo {

/** What a Matroska file, WebM included, says about itself. */
struct MatroskaFile {
    /** Whether it is one at all, and not only called so. */
    bool isValid = false;
    /** Whether it lists its tracks, and what kinds of them there are. */
    bool hasTracks = false, hasSound = false, hasVideo = false;
    /** Seconds; 0 when it doesn't say. */
    double duration = 0;
    /** By the names that other kinds of files have for them: TITLE, ALBUM, DATE. */
    std::map<std::string, std::string> properties;
    /** In the order of the file. */
    std::vector<FoundChapter> chapters;

    /** As much as can be made out of whatever `file` holds. */
    static MatroskaFile read(std::istream& file);
};

}  // namespace helmo
