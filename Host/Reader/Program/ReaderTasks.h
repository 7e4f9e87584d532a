#pragma once

#include <filesystem>
#include <string>

#include "Host/Library/TagReader.h"
#include "Host/Reader/Picture.h"

namespace helmo {

/** What the reader does at each request, in its own process. May throw; `std::bad_alloc` when a file needs
   more memory than there is. */
class ReaderTasks {
public:
    virtual ~ReaderTasks() = default;
    virtual TagReading tags(const std::filesystem::path& file);
    virtual PictureReading pictureOfFile(const std::filesystem::path& file, PixelSize fitting);
    virtual PictureReading pictureOfBytes(const std::string& bytes, PixelSize fitting);
};

}  // namespace helmo
