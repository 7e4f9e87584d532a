#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Platform/Toolkit/Image.h"

namespace helmo {

/** What came of reading a cover. */
struct CoverReading {
    /** None when there is none or it can't be read. */
    std::shared_ptr<const zornic::ImageSource> image;
    /** Why not; empty as well when nothing can be read at all, which is no fault of the file's. */
    std::string problem;
};

/** Reads covers out of music files and picture files. Any thread. */
class CoverReader {
public:
    virtual ~CoverReader() = default;
    /** The picture of `file`, no larger than needed to fill `fittingSize` in points. */
    virtual CoverReading cover(const std::filesystem::path& file, zornic::Size fittingSize, double scale) = 0;
};

}  // namespace helmo
