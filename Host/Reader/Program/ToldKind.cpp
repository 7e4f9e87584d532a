#include "Host/Reader/Program/ToldKind.h"

#include <algorithm>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <string_view>
#include <tpropertymap.h>

#include "Host/Library/MediaKindWord.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

namespace {

using namespace zornic::MediaType;

std::int64_t kindOfAtoms(TagLib::MP4::File& file) {
    constexpr int kindAudiobook = 2, kindMusicVideo = 6, kindPodcast = 21, kindLecture = 23;
    const auto* tag = file.tag();
    if (!tag) return 0;
    if (tag->contains("pcst") && tag->item("pcst").toBool()) return Podcast;
    switch (tag->contains("stik") ? tag->item("stik").toByte() : 0) {
        case kindAudiobook:
            return Audiobook;
        case kindMusicVideo:
            return MusicVideo;
        case kindPodcast:
            return Podcast;
        case kindLecture:
            return Lecture;
        default:
            return 0;  // "music" is what programs write into everything
    }
}

/** A text that says so, or where the podcast comes from. */
std::int64_t kindOfProperty(std::string_view name, const std::string& value) {
    if (name == "PODCAST") return value != "0" && value != "false" ? Podcast : 0;
    if (name == "PODCASTURL" || name == "PODCASTID") return Podcast;
    return name.ends_with("MEDIATYPE") || name.ends_with("MEDIAKIND") ? mediaKindOfWord(value) : 0;
}

}  // namespace

std::int64_t toldKind(TagLib::File& file, const TagLib::PropertyMap& properties) {
    if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file))
        if (const auto kind = kindOfAtoms(*mp4)) return kind;
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file))
        if (mpeg->hasID3v2Tag() && !mpeg->ID3v2Tag()->frameList("PCST").isEmpty()) return Podcast;
    return toldKind(properties);
}

std::int64_t toldKind(const TagLib::PropertyMap& properties) {
    for (const auto& [name, values] : properties)
        if (!values.isEmpty() && !values.front().isEmpty())
            if (const auto kind = kindOfProperty(name.to8Bit(true), values.front().to8Bit(true))) return kind;
    return 0;
}

}  // namespace helmo
