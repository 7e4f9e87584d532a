#include "Tools/DemoLibrary/TagWriter.h"

#include <attachedpictureframe.h>
#include <chapterframe.h>
#include <fileref.h>
#include <flacfile.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <opusfile.h>
#include <stdexcept>
#include <string>
#include <tableofcontentsframe.h>
#include <textidentificationframe.h>
#include <tpropertymap.h>
#include <vorbisfile.h>
#include <wavfile.h>
#include <xiphcomment.h>

namespace helmo::demo {

namespace {

TagLib::String text(const std::string& value) { return {value, TagLib::String::UTF8}; }

/** Tags of every format write a number and its total as "3/12", except Vorbis comments, which have two
 * fields. */
void addNumber(TagLib::PropertyMap& map, const char* field, const char* totalField, int number, int total,
               bool inTwoFields) {
    if (inTwoFields) {
        map[field] = text(std::to_string(number));
        map[totalField] = text(std::to_string(total));
    } else {
        map[field] = text(std::to_string(number) + "/" + std::to_string(total));
    }
}

TagLib::PropertyMap propertiesOf(const Album& album, std::size_t index, bool isVorbis) {
    const Track& track = album.tracks[index];
    TagLib::PropertyMap map;
    map["TITLE"] = text(track.title);
    map["ARTIST"] = text(album.artistOfTrack(index));
    map["ALBUM"] = text(album.title);
    map["ALBUMARTIST"] = text(album.artist);
    map["GENRE"] = text(album.genre);
    map["DATE"] = text(track.date.empty() ? std::to_string(album.year) : track.date);
    if (!track.composer.empty()) map["COMPOSER"] = text(track.composer);
    if (!album.sortArtist.empty()) {
        map["ARTISTSORT"] = text(album.sortArtist);
        map["ALBUMARTISTSORT"] = text(album.sortArtist);
    }
    if (album.isCompilation) map["COMPILATION"] = text("1");
    addNumber(map, "TRACKNUMBER", "TRACKTOTAL", album.numberOfTrack(index),
              album.trackCountOfDisc(track.disc), isVorbis);
    if (album.discCount() > 1) {
        addNumber(map, "DISCNUMBER", "DISCTOTAL", track.disc, album.discCount(), isVorbis);
    }
    return map;
}

TagLib::ByteVector dataOf(const Bytes& picture) {
    return {picture.data(), static_cast<unsigned int>(picture.size())};
}

TagLib::FLAC::Picture* flacPicture(const Bytes& picture) {
    auto* result = new TagLib::FLAC::Picture;  // the tag that takes it deletes it
    result->setType(TagLib::FLAC::Picture::FrontCover);
    result->setMimeType("image/jpeg");
    result->setWidth(CoverPainter::side);
    result->setHeight(CoverPainter::side);
    result->setColorDepth(24);
    result->setData(dataOf(picture));
    return result;
}

void addPicture(TagLib::ID3v2::Tag& tag, const Bytes& picture) {
    auto* frame = new TagLib::ID3v2::AttachedPictureFrame;  // the tag that takes it deletes it
    frame->setType(TagLib::ID3v2::AttachedPictureFrame::FrontCover);
    frame->setMimeType("image/jpeg");
    frame->setPicture(dataOf(picture));
    tag.addFrame(frame);
}

void addPicture(TagLib::MP4::Tag& tag, const Bytes& picture) {
    const TagLib::MP4::CoverArt art(TagLib::MP4::CoverArt::JPEG, dataOf(picture));
    TagLib::MP4::CoverArtList arts;
    arts.append(art);
    tag.setItem("covr", arts);
}

void embedPicture(TagLib::File& file, const Bytes& picture) {
    if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(&file)) {
        flac->addPicture(flacPicture(picture));
    } else if (auto* vorbis = dynamic_cast<TagLib::Ogg::Vorbis::File*>(&file)) {
        vorbis->tag()->addPicture(flacPicture(picture));
    } else if (auto* opus = dynamic_cast<TagLib::Ogg::Opus::File*>(&file)) {
        opus->tag()->addPicture(flacPicture(picture));
    } else if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file)) {
        addPicture(*mpeg->ID3v2Tag(true), picture);
    } else if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file)) {
        addPicture(*mp4->tag(), picture);
    } else if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(&file)) {
        addPicture(*wav->ID3v2Tag(), picture);
    }
}

void addChapters(TagLib::ID3v2::Tag& tag, const Track& track) {
    constexpr unsigned int milliseconds = 1000, noOffset = 0xffffffff;
    TagLib::ByteVectorList names;
    for (std::size_t at = 0; at < track.chapters.size(); ++at) {
        const bool isLast = at + 1 == track.chapters.size();
        const int end = isLast ? track.seconds : track.chapters[at + 1].second;
        const std::string name = "chapter" + std::to_string(at);
        names.append(TagLib::ByteVector(name.c_str()));
        auto* title = new TagLib::ID3v2::TextIdentificationFrame("TIT2", TagLib::String::UTF8);
        title->setText(text(track.chapters[at].title));  // frames belong to what takes them
        TagLib::ID3v2::FrameList inside;
        inside.append(title);
        tag.addFrame(new TagLib::ID3v2::ChapterFrame(
            names.back(), static_cast<unsigned int>(track.chapters[at].second) * milliseconds,
            static_cast<unsigned int>(end) * milliseconds, noOffset, noOffset, inside));
    }
    auto* contents = new TagLib::ID3v2::TableOfContentsFrame("contents", names);
    contents->setIsTopLevel(true);
    contents->setIsOrdered(true);
    tag.addFrame(contents);
}

bool isVorbisComment(const TagLib::File& file) {
    return dynamic_cast<const TagLib::FLAC::File*>(&file) || dynamic_cast<const TagLib::Ogg::File*>(&file);
}

}  // namespace

void TagWriter::write(const Album& album, std::size_t index, const Bytes& picture,
                      const std::filesystem::path& path) {
    TagLib::FileRef reference(path.c_str(), false);
    if (reference.isNull()) throw std::runtime_error("no tags can be written");
    TagLib::File& file = *reference.file();
    TagLib::PropertyMap map = propertiesOf(album, index, isVorbisComment(file));
    const bool isExplicit = album.tracks[index].isExplicit;
    if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file)) {
        file.setProperties(map);
        constexpr unsigned char audiobook = 2;
        if (isExplicit) mp4->tag()->setItem("rtng", TagLib::MP4::Item(static_cast<unsigned char>(1)));
        if (album.kind == Kind::Audiobook) mp4->tag()->setItem("stik", TagLib::MP4::Item(audiobook));
    } else {
        if (isExplicit) map["ADVISORY"] = text("1");
        file.setProperties(map);
    }
    auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file);
    if (mpeg && !album.tracks[index].chapters.empty())
        addChapters(*mpeg->ID3v2Tag(true), album.tracks[index]);
    if (!picture.empty()) embedPicture(file, picture);
    if (!reference.save()) throw std::runtime_error("the tags can't be saved");
}

}  // namespace helmo::demo
