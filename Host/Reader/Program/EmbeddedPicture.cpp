#include "Host/Reader/Program/EmbeddedPicture.h"

#include <aifffile.h>
#include <apefile.h>
#include <apetag.h>
#include <asffile.h>
#include <asfpicture.h>
#include <asftag.h>
#include <attachedpictureframe.h>
#include <flacfile.h>
#include <id3v2tag.h>
#include <mp4coverart.h>
#include <mp4file.h>
#include <mpcfile.h>
#include <mpegfile.h>
#include <trueaudiofile.h>
#include <wavfile.h>
#include <wavpackfile.h>
#include <xiphcomment.h>

#include "Host/Reader/Picture.h"

namespace helmo {

namespace {

/** Keeps the best of the pictures that it is shown. */
class PictureChoice {
public:
    void offer(const TagLib::ByteVector& data, bool isFrontCover) {
        if (data.isEmpty() || _hasFrontCover) return;
        if (data.size() > maximumPictureBytes) {
            _picture.isTooLarge = true;
            return;
        }
        if (!_picture.bytes.empty() && !isFrontCover) return;
        _picture.bytes.assign(data.data(), data.size());
        _hasFrontCover = isFrontCover;
    }
    EmbeddedPicture take() { return std::move(_picture); }

private:
    EmbeddedPicture _picture;
    bool _hasFrontCover = false;
};

void offer(PictureChoice& choice, const TagLib::ID3v2::Tag* tag) {
    if (!tag) return;
    for (const auto* frame : tag->frameList("APIC"))
        if (const auto* picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame*>(frame))
            choice.offer(picture->picture(),
                         picture->type() == TagLib::ID3v2::AttachedPictureFrame::FrontCover);
}

void offer(PictureChoice& choice, const TagLib::List<TagLib::FLAC::Picture*>& pictures) {
    for (const auto* picture : pictures)
        choice.offer(picture->data(), picture->type() == TagLib::FLAC::Picture::FrontCover);
}

/** An item is a file name, a zero byte and the picture. */
void offer(PictureChoice& choice, const TagLib::APE::Tag* tag) {
    if (!tag) return;
    for (const auto& [key, item] : tag->itemListMap()) {
        if (item.type() != TagLib::APE::Item::Binary || !key.upper().startsWith("COVER ART")) continue;
        const auto data = item.binaryData();
        const int zero = data.find(TagLib::ByteVector(1, '\0'));
        if (zero >= 0)
            choice.offer(data.mid(static_cast<unsigned>(zero) + 1), key.upper() == "COVER ART (FRONT)");
    }
}

void offer(PictureChoice& choice, const TagLib::MP4::Tag* tag) {
    if (!tag || !tag->contains("covr")) return;
    for (const auto& cover : tag->item("covr").toCoverArtList()) choice.offer(cover.data(), false);
}

void offer(PictureChoice& choice, const TagLib::ASF::Tag* tag) {
    if (!tag) return;
    for (const auto& attribute : tag->attribute("WM/Picture")) {
        const auto picture = attribute.toPicture();
        if (picture.isValid())
            choice.offer(picture.picture(), picture.type() == TagLib::ASF::Picture::FrontCover);
    }
}

}  // namespace

EmbeddedPicture embeddedPicture(TagLib::File& file) {
    PictureChoice choice;
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file)) {
        offer(choice, mpeg->ID3v2Tag());
        offer(choice, mpeg->APETag());
    } else if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(&file)) {
        offer(choice, flac->pictureList());
        offer(choice, flac->ID3v2Tag());
    } else if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file)) {
        offer(choice, mp4->tag());
    } else if (auto* wave = dynamic_cast<TagLib::RIFF::WAV::File*>(&file)) {
        offer(choice, wave->ID3v2Tag());
    } else if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(&file)) {
        offer(choice, aiff->tag());
    } else if (auto* asf = dynamic_cast<TagLib::ASF::File*>(&file)) {
        offer(choice, asf->tag());
    } else if (auto* ape = dynamic_cast<TagLib::APE::File*>(&file)) {
        offer(choice, ape->APETag());
    } else if (auto* mpc = dynamic_cast<TagLib::MPC::File*>(&file)) {
        offer(choice, mpc->APETag());
    } else if (auto* wavPack = dynamic_cast<TagLib::WavPack::File*>(&file)) {
        offer(choice, wavPack->APETag());
    } else if (auto* trueAudio = dynamic_cast<TagLib::TrueAudio::File*>(&file)) {
        offer(choice, trueAudio->ID3v2Tag());
    } else if (auto* xiph = dynamic_cast<TagLib::Ogg::XiphComment*>(file.tag())) {
        offer(choice, xiph->pictureList());
    }
    return choice.take();
}

}  // namespace helmo
