#include "Benchmarks/ScanMusic.h"

#include <array>
#include <attachedpictureframe.h>
#include <cstdio>
#include <fileref.h>
#include <fstream>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <random>
#include <stdexcept>
#include <string>
#include <tpropertymap.h>

#include <gst/gst.h>

#include "Host/Display/CairoHandles.h"

namespace helmo::benchmarks {

namespace fs = std::filesystem;

namespace {

/** Changes whenever the files would come out differently. */
constexpr const char* version = "2";

struct Kind {
    std::string extension, encoder;
};
const std::array kinds{Kind{"mp3", "lamemp3enc target=quality quality=5 ! xingmux"},
                       Kind{"flac", "flacenc quality=6"}, Kind{"ogg", "vorbisenc quality=0.3 ! oggmux"},
                       Kind{"m4a", "avenc_aac bitrate=112000 aac-coder=fast ! aacparse ! mp4mux"},
                       Kind{"opus", "opusenc bitrate=80000 ! oggmux"}};

constexpr std::array words{"Blue",   "River", "Night", "Fire", "Golden", "Winter", "Stone",
                           "Heart",  "Dance", "Light", "Road", "Silver", "Ocean",  "Dream",
                           "Garden", "Été",   "Mond",  "Über", "Ночь",   "夜"};
constexpr std::array genres{"Rock", "Pop", "Jazz", "Classical", "Electronic", "Folk", "Hip-Hop", "Podcast"};

/** A picture of some thousand bytes. */
TagLib::ByteVector cover(unsigned number) {
    constexpr int side = 48;
    const Surface pixels(side, side);
    std::mt19937 random(number);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < 4 * side; ++x)
            pixels.pixels()[y * pixels.stride() + x] =
                static_cast<unsigned char>(x % 4 == 3 ? 255 : random());
    cairo_surface_mark_dirty(pixels.get());
    TagLib::ByteVector bytes;
    cairo_surface_write_to_png_stream(
        pixels.get(),
        [](void* closure, const unsigned char* data, unsigned length) {
            static_cast<TagLib::ByteVector*>(closure)->append(
                TagLib::ByteVector(reinterpret_cast<const char*>(data), length));
            return CAIRO_STATUS_SUCCESS;
        },
        &bytes);
    return bytes;
}

/** Writes a quarter of a second of sound. */
void encode(const Kind& kind, const fs::path& file) {
    const std::string description =
        "audiotestsrc num-buffers=11 ! audio/x-raw,rate=44100,channels=2 ! audioconvert ! audioresample ! " +
        kind.encoder + " ! filesink location=\"" + file.string() + "\"";
    GError* error = nullptr;
    GstElement* pipeline = gst_parse_launch(description.c_str(), &error);
    g_clear_error(&error);
    if (!pipeline) throw std::runtime_error("no encoder for " + kind.extension);
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstBus* bus = gst_element_get_bus(pipeline);
    GstMessage* end = gst_bus_timed_pop_filtered(
        bus, 10 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool isWritten = end && GST_MESSAGE_TYPE(end) == GST_MESSAGE_EOS;
    if (end) gst_message_unref(end);
    gst_object_unref(bus);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
    if (!isWritten) throw std::runtime_error("music can't be encoded as " + kind.extension);
}

/** Makes one album after the other. */
class Collection {
public:
    explicit Collection(fs::path folder) : _folder(std::move(folder)) {
        gst_init(nullptr, nullptr);
        const fs::path models = _folder / ".models";
        fs::create_directories(models);
        for (const Kind& kind : kinds) encode(kind, models / ("model." + kind.extension));
    }

    void make(std::size_t count) {
        while (count > 0) {
            const std::size_t tracks = std::min<std::size_t>(count, 8 + _random() % 10);
            makeAlbum(tracks);
            count -= tracks;
        }
        fs::remove_all(_folder / ".models");
    }

private:
    std::string some(std::size_t most) {
        std::string text;
        for (std::size_t more = 1 + _random() % most; more > 0; --more)
            text += (text.empty() ? "" : " ") + std::string(words[_random() % words.size()]);
        return text;
    }

    void makeAlbum(std::size_t tracks) {
        const std::string artist =
            "The " + std::string(words[_albums / 3 % words.size()]) + " " + std::to_string(_albums / 3);
        const std::string album = some(3) + " " + std::to_string(_albums);
        const Kind& kind = kinds[_albums % kinds.size()];
        const fs::path folder = _folder / artist / album;
        fs::create_directories(folder);
        if (_albums % 4 != 0) std::ofstream(folder / "cover.jpg") << "shown by nobody " << _albums;
        for (std::size_t number = 1; number <= tracks; ++number) {
            const std::string title = some(4);
            const fs::path file = folder / ((number < 10 ? "0" : "") + std::to_string(number) + " " + title +
                                            "." + kind.extension);
            fs::copy_file(_folder / ".models" / ("model." + kind.extension), file);
            tag(file, {{"TITLE", title},
                       {"ARTIST", artist},
                       {"ALBUM", album},
                       {"ALBUMARTIST", artist},
                       {"GENRE", genres[_albums / 5 % genres.size()]},
                       {"COMPOSER", _albums % 3 == 0 ? artist : ""},
                       {"TRACKNUMBER", std::to_string(number) + "/" + std::to_string(tracks)},
                       {"DATE", std::to_string(1960 + _albums % 60)}});
            if (kind.extension == "mp3" && _albums % 10 == 0) addCover(file);
        }
        ++_albums;
    }

    static void tag(const fs::path& path,
                    const std::vector<std::pair<const char*, std::string>>& properties) {
        const TagLib::FileRef file(path.c_str(), false);
        if (file.isNull()) throw std::runtime_error(path.string() + " can't be tagged");
        TagLib::PropertyMap map;
        for (const auto& [name, value] : properties)
            if (!value.empty())
                map.insert(name, TagLib::StringList(TagLib::String(value, TagLib::String::UTF8)));
        file.file()->setProperties(map);
        if (!file.file()->save()) throw std::runtime_error(path.string() + " can't be tagged");
    }

    void addCover(const fs::path& path) const {
        TagLib::MPEG::File file(path.c_str(), false);
        auto* frame = new TagLib::ID3v2::AttachedPictureFrame;
        frame->setMimeType("image/png");
        frame->setPicture(cover(static_cast<unsigned>(_albums)));
        file.ID3v2Tag(true)->addFrame(frame);
        file.save();
    }

    const fs::path _folder;
    std::mt19937 _random{1};
    std::size_t _albums = 0;
};

}  // namespace

fs::path scanMusic(std::size_t count) {
    const fs::path folder =
        fs::path(HELMO_BENCHMARK_DATA) / ("music-" + std::to_string(count) + "-" + version);
    if (fs::exists(folder)) return folder;
    std::fprintf(stderr, "benchmark: making %zu music files\n", count);
    const fs::path unfinished = folder.string() + ".unfinished";
    fs::remove_all(unfinished);
    fs::create_directories(unfinished);
    Collection(unfinished).make(count);
    fs::rename(unfinished, folder);
    return folder;
}

}  // namespace helmo::benchmarks
