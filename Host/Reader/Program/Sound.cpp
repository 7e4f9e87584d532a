#include "Host/Reader/Program/Sound.h"

#include <aifffile.h>
#include <apefile.h>
#include <asffile.h>
#include <flacfile.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <wavfile.h>
#include <xingheader.h>

namespace helmo {

namespace {

constexpr const char* noSound = "no music can be found in it";
constexpr const char* cutOff = "it is cut off before its music begins";

/** Where an ID3v2 tag at the beginning ends; 0 without one. */
long endOfFirstTag(TagLib::File& file) {
    constexpr unsigned headerSize = 10;
    file.seek(0);
    const TagLib::ByteVector header = file.readBlock(headerSize);
    if (header.size() < headerSize || !header.startsWith("ID3")) return 0;
    long size = 0;
    for (unsigned at = 6; at < headerSize; ++at) size = size << 7 | (header[static_cast<int>(at)] & 0x7f);
    return size + static_cast<long>(headerSize);
}

/** AAC without a container, whose length nobody wrote down. */
bool isBareStream(TagLib::File& file) {
    file.seek(endOfFirstTag(file));
    const TagLib::ByteVector start = file.readBlock(4);
    if (start.startsWith("ADIF")) return true;
    return start.size() == 4 && static_cast<unsigned char>(start[0]) == 0xff && (start[1] & 0xf6) == 0xf0;
}

/** Where the content of a chunk begins; negative without one. */
long chunk(TagLib::File& file, const char* name) {
    constexpr long headOfChunk = 8;
    const long at = file.find(TagLib::ByteVector(name), 0);
    return at < 0 || at + headOfChunk >= file.length() ? -1 : at + headOfChunk;
}

/** Copied while it was being written: the chunk with the sound claims more than there is, and is not counted.
 */
Sound soundOfCutWave(TagLib::File& file) {
    constexpr unsigned formatSize = 16;
    const long format = chunk(file, "fmt "), data = chunk(file, "data");
    if (format < 0 || data < 0) return {0, cutOff};
    file.seek(format);
    const TagLib::ByteVector bytes = file.readBlock(formatSize);
    const auto channels = bytes.toUShort(2, false);
    const auto bytesPerSecond = bytes.toUInt(8, false);
    if (channels == 0 || bytesPerSecond == 0) return {0, noSound};
    return {static_cast<double>(file.length() - data) / bytesPerSecond, {}, true};
}

/** Of this kind of file some say how many bytes they have. */
bool isCutMpeg(TagLib::File& file) {
    const auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file);
    const auto* counts = mpeg ? mpeg->audioProperties()->xingHeader() : nullptr;
    return counts && counts->isValid() && static_cast<long>(counts->totalSize()) > file.length();
}

bool hasFlacFrames(TagLib::File& file) {
    constexpr unsigned headOfBlock = 4, lastBlock = 0x80;
    long at = endOfFirstTag(file) + 4;
    for (;;) {
        file.seek(at);
        const TagLib::ByteVector head = file.readBlock(headOfBlock);
        if (head.size() < headOfBlock) return false;
        at += static_cast<long>(headOfBlock + head.toUInt(1, 3, true));
        if (static_cast<unsigned char>(head[0]) & lastBlock) return at < file.length();
    }
}

bool isPlausible(const TagLib::AudioProperties& audio) {
    constexpr int mostChannels = 64, highestRate = 6'000'000;
    return audio.channels() > 0 && audio.channels() <= mostChannels && audio.sampleRate() > 0 &&
           audio.sampleRate() <= highestRate;
}

template <class Kind>
bool isA(TagLib::File& file) {
    return dynamic_cast<Kind*>(&file) != nullptr;
}

}  // namespace

Sound soundOf(TagLib::File& file) {
    const auto* audio = file.audioProperties();
    if (audio && audio->lengthInMilliseconds() > 0) {
        if (!isPlausible(*audio)) return {0, noSound};
        // Rounded down to nothing: silence, or the frames are missing.
        if (audio->bitrate() == 0 && isA<TagLib::FLAC::File>(file) && !hasFlacFrames(file))
            return {0, cutOff};
        return {audio->lengthInMilliseconds() / 1000.0, {}, isCutMpeg(file)};
    }
    if (isA<TagLib::MPEG::File>(file)) return {0, isBareStream(file) ? "" : noSound};
    if (isA<TagLib::RIFF::WAV::File>(file)) return soundOfCutWave(file);
    if (isA<TagLib::RIFF::AIFF::File>(file))
        return {0, chunk(file, "COMM") < 0 || chunk(file, "SSND") < 0 ? noSound : ""};
    if (!audio || !isPlausible(*audio)) return {0, noSound};
    // Recorded in pieces, each with a length of its own.
    const bool mayBeUntold = isA<TagLib::MP4::File>(file) || isA<TagLib::ASF::File>(file);
    return {0, mayBeUntold ? "" : cutOff};
}

}  // namespace helmo
