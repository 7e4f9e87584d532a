#include "Host/Reader/Program/TagLibReader.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <exception>
#include <fileref.h>
#include <fstream>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <new>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <tfilestream.h>
#include <tpropertymap.h>
#include <tuple>
#include <unistd.h>
#include <vector>

#include "Host/Library/MediaFiles.h"
#include "Host/Library/TagText.h"
#include "Host/Reader/Program/MatroskaFile.h"
#include "Host/Reader/Program/Mp4Movie.h"
#include "Host/Reader/Program/PictureDecoder.h"
#include "Host/Reader/Program/Sound.h"
#include "Host/Reader/Program/TagProperties.h"
#include "Host/Reader/Program/TaggedChapters.h"
#include "Host/Reader/Program/ToldKind.h"

namespace helmo {

namespace {

void readNames(TagProperties& properties, TrackTags& tags) {
    tags.title = properties.first("TITLE");
    tags.sortTitle = properties.first("TITLESORT");
    tags.artist = properties.all("ARTIST");
    tags.sortArtist = properties.all("ARTISTSORT");
    tags.albumTitle = properties.first("ALBUM");
    tags.sortAlbumTitle = properties.first("ALBUMSORT");
    tags.albumArtist = properties.all("ALBUMARTIST");
    tags.sortAlbumArtist = properties.all("ALBUMARTISTSORT");
    tags.composer = properties.all("COMPOSER");
    tags.sortComposer = properties.all("COMPOSERSORT");
    tags.genre = properties.first("GENRE");
    tags.language = properties.first("LANGUAGE");
}

/** Episodes often have the day of their release beside a mere year. */
std::string dateOf(TagProperties& properties) {
    const std::string date = properties.first("DATE"), release = properties.first("RELEASEDATE");
    return parsedDate(release) && release.starts_with(date) ? release : date;
}

void readNumbers(TagProperties& properties, TrackTags& tags) {
    std::tie(tags.trackNumber, tags.trackCount) = properties.numbers("TRACKNUMBER");
    if (tags.trackCount == 0) tags.trackCount = properties.number({"TRACKTOTAL", "TOTALTRACKS"});
    std::tie(tags.discNumber, tags.discCount) = properties.numbers("DISCNUMBER");
    if (tags.discCount == 0) tags.discCount = properties.number({"DISCTOTAL", "TOTALDISCS"});
    const std::string date = dateOf(properties);
    tags.releaseDate = parsedDate(date);
    tags.year = tags.releaseDate ? firstNumber(date.substr(0, 4)) : 0;
    if (!tags.releaseDate && !date.empty()) properties.note("DATE is no date");
    tags.isCompilation = properties.isSet("COMPILATION");
    tags.isExplicit = properties.isSetWithAnyPrefix("ADVISORY");
}

bool isRatedExplicit(TagLib::MP4::File& file) {
    const auto* tag = file.tag();
    const int rating = tag && tag->contains("rtng") ? tag->item("rtng").toByte() : 0;
    return rating == 1 || rating == 4;
}

void takeChapters(std::vector<FoundChapter> found, TagProperties& properties, TrackTags& tags) {
    if (found.empty()) return;
    ChapterList list(std::move(found), std::chrono::milliseconds(std::llround(tags.duration * 1000)));
    if (!list.remarks().empty()) properties.note(list.remarks());
    tags.chapters = std::move(list.chapters());
}

/** What is in a container beside its tags. */
void readContent(TagLib::File& file, const TagLib::PropertyMap& map, const std::filesystem::path& path,
                 TagProperties& properties, TrackTags& tags) {
    auto chapters = taggedChapters(file, map);
    if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file)) {
        if (isRatedExplicit(*mp4)) tags.isExplicit = true;
        std::ifstream stream(path, std::ios::binary);
        Mp4Movie movie = Mp4Movie::read(stream);
        tags.hasVideo = movie.hasVideo && !isSoundFile(path.native());
        if (chapters.empty()) chapters = std::move(movie.chapters);
    }
    takeChapters(std::move(chapters), properties, tags);
}

/** A hash of eight bytes at a time, in the positive half of 64 bits and never 0. */
std::int64_t pictureHash(const std::string& bytes) {
    constexpr std::uint64_t factor = 0x9e3779b97f4a7c15u;
    std::uint64_t hash = bytes.size() * factor;
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + at, std::min(sizeof word, bytes.size() - at));
        hash = (std::rotl(hash, 29) ^ word) * factor;
    }
    hash ^= hash >> 32;
    return static_cast<std::int64_t>((hash >> 1) | 1);
}

void readPicture(TagLib::File& file, TagProperties& properties, TrackTags& tags) {
    const EmbeddedPicture picture = embeddedPicture(file);
    if (isPictureData(picture.bytes))
        tags.picture = pictureHash(picture.bytes);
    else if (!picture.bytes.empty())
        properties.note("its picture is damaged or of no known kind");
    if (picture.isTooLarge) properties.note("a picture larger than 16 MB is left out");
}

/** Texts in an encoding that they don't keep to come out empty. */
void noteUndecodedTexts(const TagLib::ID3v2::Tag& tag, TagProperties& properties) {
    constexpr unsigned emptyText = 5;  // the encoding, its mark, the end
    for (const auto* frame : tag.frameList()) {
        const TagLib::ByteVector name = frame->frameID();
        if (name.startsWith("T") && frame->size() > emptyText && frame->toString().isEmpty())
            properties.note(std::string(name.data(), name.size()) + " is not in the encoding that it names");
    }
}

/** Whether a frame of the tag at the beginning of `file` claims to reach beyond that tag. Of the version
   whose sizes all programs write alike. */
bool hasFrameBeyondTag(TagLib::File& file, const TagLib::ID3v2::Header& header) {
    constexpr unsigned headerSize = 10, version = 3;
    const unsigned end = header.tagSize() + headerSize;
    for (unsigned at = headerSize; header.majorVersion() == version && at + headerSize <= end;) {
        file.seek(static_cast<long>(at));
        const TagLib::ByteVector frame = file.readBlock(headerSize);
        if (frame.size() < headerSize || frame[0] == 0) break;  // nothing but padding is left
        const unsigned size = frame.toUInt(4, true);
        if (size > end - at - headerSize) return true;
        at += headerSize + size;
    }
    return false;
}

/** Whether frames that were found fill the tag, but for padding: then all of them were. */
bool isFilled(TagLib::File& file, const TagLib::ID3v2::Tag& tag) {
    constexpr unsigned headerSize = 10;
    unsigned end = headerSize;
    for (const auto* frame : tag.frameList()) end += headerSize + frame->size();
    if (end >= tag.header()->tagSize() + headerSize) return true;
    file.seek(static_cast<long>(end));
    return file.readBlock(1).startsWith(TagLib::ByteVector(1, '\0'));
}

void noteBrokenFrames(TagLib::File& file, TagProperties& properties) {
    auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file);
    if (!mpeg || !mpeg->hasID3v2Tag()) return;
    const TagLib::ID3v2::Tag& tag = *mpeg->ID3v2Tag();
    if (static_cast<long>(tag.header()->completeTagSize()) > file.length())
        properties.note("its tag claims to be larger than the file");
    const bool isPlain = !tag.header()->unsynchronisation() && !tag.header()->extendedHeader();
    if (isPlain && !isFilled(file, tag) && hasFrameBeyondTag(file, *tag.header()))
        properties.note("a frame claims to be larger than its tag");
    if (properties.hasEmpty()) noteUndecodedTexts(tag, properties);
}

TagReading readOpened(TagLib::File& file, const Sound& sound, const std::filesystem::path& path) {
    TagReading reading;
    TrackTags& tags = reading.tags;
    const TagLib::PropertyMap map = file.properties();
    TagProperties properties(map);
    readNames(properties, tags);
    readNumbers(properties, tags);
    tags.mediaType = toldKind(file, map);
    tags.duration = sound.duration;
    readContent(file, map, path, properties, tags);
    readPicture(file, properties, tags);
    noteBrokenFrames(file, properties);
    if (sound.isCutOff) properties.note("it is cut off, its end is missing");
    reading.problem = properties.remarks();
    return reading;
}

/** A stream that doesn't tell the file's name, so that what is in it decides of what kind it is. */
class NamelessStream final : public TagLib::FileStream {
public:
    explicit NamelessStream(const std::filesystem::path& file) : FileStream(file.c_str(), true) {}
    TagLib::FileName name() const override { return ""; }
};

TagLib::FileRef opened(TagLib::IOStream& stream) {
    return TagLib::FileRef(&stream, true, TagLib::AudioProperties::Average);
}

/** Reads by name, then by content: some files are called what they are not. */
TagReading readAnyhow(const std::filesystem::path& file) {
    TagLib::FileStream stream(file.c_str(), true);
    const auto reference = opened(stream);
    std::string problem = "no music: it is damaged, or of another kind than its name says";
    if (!reference.isNull() && reference.file()->isValid()) {
        const Sound sound = soundOf(*reference.file());
        if (sound.problem.empty()) return readOpened(*reference.file(), sound, file);
        problem = sound.problem;
    }
    NamelessStream nameless(file);
    const auto byContent = opened(nameless);
    if (!byContent.isNull() && byContent.file()->isValid())
        if (const Sound sound = soundOf(*byContent.file()); sound.problem.empty())
            return readOpened(*byContent.file(), sound, file);
    return {{}, problem, false};
}

TagReading readMatroska(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    MatroskaFile matroska = MatroskaFile::read(stream);
    if (!matroska.isValid) return {{}, "no music: it is of another kind than its name says", false};
    if (matroska.hasTracks && !matroska.hasSound) return {{}, "no music can be found in it", false};
    TagLib::PropertyMap map;
    for (const auto& [name, value] : matroska.properties)
        map.insert(TagLib::String(name, TagLib::String::UTF8),
                   TagLib::StringList(TagLib::String(value, TagLib::String::UTF8)));
    TagReading reading;
    TrackTags& tags = reading.tags;
    TagProperties properties(map);
    readNames(properties, tags);
    readNumbers(properties, tags);
    tags.mediaType = toldKind(map);
    tags.duration = matroska.duration;
    tags.hasVideo = matroska.hasVideo && !isSoundFile(file.native());
    takeChapters(std::move(matroska.chapters), properties, tags);
    reading.problem = properties.remarks();
    return reading;
}

/** Of a kind of file that TagLib doesn't know; none when `file` is called otherwise. */
std::optional<TagReading> readWithoutTagLib(const std::filesystem::path& file) {
    return isMatroskaFile(file.native()) ? std::optional(readMatroska(file)) : std::nullopt;
}

}  // namespace

std::string whyUnreadable(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || ::access(file.c_str(), R_OK) != 0)
        return "it can't be opened: " + std::generic_category().message(errno);
    if (!S_ISREG(status.st_mode)) return "it is no file";
    return status.st_size == 0 ? "the file is empty" : "";
}

TagReading TagLibReader::read(const std::filesystem::path& file) {
    try {
        if (std::string problem = whyUnreadable(file); !problem.empty())
            return {{}, std::move(problem), false};
        if (auto reading = readWithoutTagLib(file)) return std::move(*reading);
        return readAnyhow(file);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return {{}, std::string("the tags can't be read: ") + error.what(), false};
    }
}

EmbeddedPicture TagLibReader::picture(const std::filesystem::path& file) {
    const auto pictureIn = [](TagLib::IOStream& stream) {
        const TagLib::FileRef reference(&stream, false);
        const bool isOpen = !reference.isNull() && reference.file()->isValid();
        return isOpen ? embeddedPicture(*reference.file()) : EmbeddedPicture();
    };
    TagLib::FileStream stream(file.c_str(), true);
    auto picture = pictureIn(stream);
    if (!picture.bytes.empty() || picture.isTooLarge) return picture;
    NamelessStream nameless(file);
    return pictureIn(nameless);
}

}  // namespace helmo
