#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <string>

#include "Host/Reader/Picture.h"
#include "Host/Reader/ReaderConversation.h"

namespace helmo {

/** Reads pictures in a process of its own, which starts with the first one and ends some time after the last.
   One at a time; others wait. Any thread. */
class PictureReader {
public:
    explicit PictureReader(std::shared_ptr<ReaderProgram> program);

    /** The picture in a music file, its front cover first, or a picture file's; upright and no larger than
       needed to fill `fitting`. */
    PictureReading pictureOfFile(const std::filesystem::path& file, PixelSize fitting);
    /** The same of a picture's bytes. */
    PictureReading pictureOfBytes(const std::string& bytes, PixelSize fitting);

private:
    PictureReading read(ReaderRequest request);

    std::mutex _mutex;
    ReaderConversation _conversation;
};

}  // namespace helmo
