#include <sstream>

#include "Fuzz/Require.h"
#include "Host/Reader/Program/MatroskaFile.h"
#include "Host/Reader/Program/Mp4Movie.h"

namespace {

using namespace helmo;

void requireOrder(std::vector<FoundChapter> found) {
    constexpr std::chrono::milliseconds length(3'600'000);
    ChapterList list(std::move(found), length);
    require(list.chapters().size() <= maximumChapters, "not too many");
    std::chrono::milliseconds end(0);
    for (const TrackChapter& chapter : list.chapters()) {
        require(chapter.start >= end && chapter.duration.count() >= 0, "none reaches into the next");
        end = chapter.start + chapter.duration;
        require(end <= length, "none reaches beyond the end");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream file(std::string(reinterpret_cast<const char*>(data), size));
    requireOrder(Mp4Movie::read(file).chapters);
    requireOrder(MatroskaFile::read(file).chapters);
    return 0;
}
