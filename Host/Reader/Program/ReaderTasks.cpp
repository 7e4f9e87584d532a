#include "Host/Reader/Program/ReaderTasks.h"

#include "Host/Library/PictureFinder.h"
#include "Host/Reader/Program/PictureDecoder.h"
#include "Host/Reader/Program/TagLibReader.h"

namespace helmo {

TagReading ReaderTasks::tags(const std::filesystem::path& file) { return TagLibReader().read(file); }

PictureReading ReaderTasks::pictureOfFile(const std::filesystem::path& file, PixelSize fitting) {
    if (const std::string problem = whyUnreadable(file); !problem.empty()) return {{}, problem};
    if (isPictureData(beginningOf(file))) {
        const std::string bytes = fileBytes(file, maximumPictureBytes);
        if (bytes.empty()) return {{}, "the picture is larger than 16 MB"};
        return decodedPicture(bytes, fitting);
    }
    const EmbeddedPicture picture = TagLibReader().picture(file);
    if (picture.isTooLarge && picture.bytes.empty()) return {{}, "its picture is larger than 16 MB"};
    if (picture.bytes.empty()) return {{}, "it holds no picture"};
    return decodedPicture(picture.bytes, fitting);
}

PictureReading ReaderTasks::pictureOfBytes(const std::string& bytes, PixelSize fitting) {
    return decodedPicture(bytes, fitting);
}

}  // namespace helmo
