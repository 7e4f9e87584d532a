#include "Host/Reader/PictureReader.h"

namespace helmo {

PictureReader::PictureReader(std::shared_ptr<ReaderProgram> program)
    : _conversation(std::move(program), ReaderRole::Pictures) {}

PictureReading PictureReader::pictureOfFile(const std::filesystem::path& file, PixelSize fitting) {
    return read({0, ReaderRequest::Kind::PictureOfFile, file.string(), fitting});
}

PictureReading PictureReader::pictureOfBytes(const std::string& bytes, PixelSize fitting) {
    if (bytes.size() > maximumPictureBytes) return {{}, "the picture is larger than 16 MB"};
    return read({0, ReaderRequest::Kind::PictureOfBytes, bytes, fitting});
}

PictureReading PictureReader::read(ReaderRequest request) {
    std::lock_guard lock(_mutex);
    _conversation.ask(std::move(request));
    auto answer = _conversation.take(true);
    if (answer->reply) return std::move(std::get<PictureReading>(answer->reply->reading));
    return {{}, std::move(answer->failure)};
}

}  // namespace helmo
