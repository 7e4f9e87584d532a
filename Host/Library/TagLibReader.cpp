#include "Host/Library/TagLibReader.h"

#include <algorithm>
#include <exception>
#include <fileref.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <string_view>
#include <tpropertymap.h>

#include "Host/Library/EmbeddedPicture.h"
#include "Host/Library/TagText.h"

namespace helmo {

namespace {

using zornic::MediaType::Audiobook;
using zornic::MediaType::Music;
using zornic::MediaType::MusicVideo;
using zornic::MediaType::Podcast;

/** Reads properties by name, texts made fit to store. */
class Properties {
public:
    explicit Properties(const TagLib::PropertyMap& map) : _map(map) {}

    std::string first(const char* name) const {
        const auto found = _map.find(name);
        if (found == _map.end() || found->second.isEmpty()) return {};
        return cleanTagText(found->second.front().to8Bit(true));
    }
    /** Several values, as of two artists, in one text. */
    std::string all(const char* name) const {
        const auto found = _map.find(name);
        if (found == _map.end()) return {};
        return cleanTagText(found->second.toString(", ").to8Bit(true));
    }
    /** The number under the first of several names that has one. */
    int number(std::initializer_list<const char*> names) const {
        for (const char* name : names)
            if (const int number = firstNumber(first(name))) return number;
        return 0;
    }
    bool isSet(const char* name) const { return firstNumber(first(name)) == 1; }
    /** Programs put a word of their own before some names. */
    bool isSetWithAnyPrefix(const char* ending) const {
        for (const auto& [name, values] : _map)
            if (name.to8Bit(true).ends_with(ending) && isSet(name.toCString(true))) return true;
        return false;
    }

private:
    const TagLib::PropertyMap& _map;
};

void readNames(const Properties& properties, TrackTags& tags) {
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
}

void readNumbers(const Properties& properties, TrackTags& tags) {
    tags.trackNumber = firstNumber(properties.first("TRACKNUMBER"));
    tags.trackCount = numberBehindSlash(properties.first("TRACKNUMBER"));
    if (tags.trackCount == 0) tags.trackCount = properties.number({"TRACKTOTAL", "TOTALTRACKS"});
    tags.discNumber = firstNumber(properties.first("DISCNUMBER"));
    tags.discCount = numberBehindSlash(properties.first("DISCNUMBER"));
    if (tags.discCount == 0) tags.discCount = properties.number({"DISCTOTAL", "TOTALDISCS"});
    const std::string date = properties.first("DATE");
    tags.releaseDate = parsedDate(date);
    tags.year = tags.releaseDate ? firstNumber(date.substr(0, 4)) : 0;
    tags.isCompilation = properties.isSet("COMPILATION");
    tags.isExplicit = properties.isSetWithAnyPrefix("ADVISORY");
}

std::int64_t mediaTypeOfGenre(const std::string& genre) {
    std::string lower = genre;
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (lower == "podcast") return Podcast;
    if (lower == "audiobook" || lower == "audiobooks" || lower == "speech") return Audiobook;
    return Music;
}

/** What this container says in atoms of its own. */
void readAtoms(TagLib::MP4::File& file, TrackTags& tags) {
    constexpr int kindAudiobook = 2, kindMusicVideo = 6, kindPodcast = 21;
    const auto* tag = file.tag();
    if (!tag) return;
    const auto has = [&](const char* atom) { return tag->contains(atom); };
    const int kind = has("stik") ? tag->item("stik").toByte() : 0;
    if (kind == kindAudiobook) tags.mediaType = Audiobook;
    if (kind == kindMusicVideo) tags.mediaType = MusicVideo;
    if (kind == kindPodcast || (has("pcst") && tag->item("pcst").toBool())) tags.mediaType = Podcast;
    const int rating = has("rtng") ? tag->item("rtng").toByte() : 0;
    if (rating == 1 || rating == 4) tags.isExplicit = true;
}

void readKind(TagLib::File& file, const std::filesystem::path& path, TrackTags& tags) {
    tags.mediaType = mediaTypeOfGenre(tags.genre);
    std::string extension = path.extension().string();
    if (extension == ".m4b" || extension == ".M4B") tags.mediaType = Audiobook;
    if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file)) readAtoms(*mp4, tags);
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file))
        if (mpeg->hasID3v2Tag() && !mpeg->ID3v2Tag()->frameList("PCST").isEmpty()) tags.mediaType = Podcast;
}

/** FNV-1a, in the positive half of 64 bits and never 0. */
std::int64_t pictureHash(const std::string& bytes) {
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3u;
    return static_cast<std::int64_t>((hash >> 1) | 1);
}

TagReading readOpened(const TagLib::FileRef& reference, const std::filesystem::path& path) {
    TagReading reading;
    TagLib::File& file = *reference.file();
    TrackTags& tags = reading.tags;
    const TagLib::PropertyMap map = file.properties();
    const Properties properties(map);
    readNames(properties, tags);
    readNumbers(properties, tags);
    readKind(file, path, tags);
    if (const auto* audio = file.audioProperties())
        tags.duration = std::max(0, audio->lengthInMilliseconds()) / 1000.0;
    const EmbeddedPicture picture = embeddedPicture(file);
    if (!picture.bytes.empty()) tags.picture = pictureHash(picture.bytes);
    if (picture.isTooLarge) reading.problem = "a picture larger than 16 MB is left out";
    return reading;
}

/** Kinds of music file for which there is no tag reader; they are known by their names alone. */
bool isWithoutReader(const std::filesystem::path& path) {
    const std::string extension = path.extension().string();
    return extension == ".mka" || extension == ".MKA";
}

}  // namespace

TagReading TagLibReader::read(const std::filesystem::path& file) {
    try {
        const TagLib::FileRef reference(file.c_str(), true, TagLib::AudioProperties::Average);
        if (!reference.isNull() && reference.file()->isValid()) return readOpened(reference, file);
        return {{}, isWithoutReader(file) ? "" : "the tags can't be read: damaged, or no music of its kind"};
    } catch (const std::exception& error) {
        return {{}, std::string("the tags can't be read: ") + error.what()};
    }
}

std::string TagLibReader::picture(const std::filesystem::path& file) {
    try {
        const TagLib::FileRef reference(file.c_str(), false);
        if (reference.isNull() || !reference.file()->isValid()) return {};
        return embeddedPicture(*reference.file()).bytes;
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace helmo
