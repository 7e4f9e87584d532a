#include "Tests/Journeys/JourneyFixture.h"

#include <fstream>
#include <unistd.h>

#include <cairo.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/wavfile.h>

#include "Tests/Support/SoundFiles.h"

namespace {

namespace fs = std::filesystem;

struct Song {
    const char *file, *title, *artist, *album;
    int seconds = 20;
};

constexpr Song songs[] = {
    {"amber.wav", "Amber Road", "Zora Pell", "Night Ferry"},
    {"break.wav", "The Breakwater", "Ilka Wend", "Low Tide"},
    {"cafe.wav", "Café an der Brücke", "Jörg Übel", "Größenwahn"},
    {"Driftwood.wav", nullptr, nullptr, nullptr},
    {"dromos.wav", "Δρόμος", "Ελένη Ψαρού", "Άνεμος"},
    {"vecher.wav", "Вечер", "Юрий Ёлкин", "Снег"},
    {"or.wav", "אור", "דנה ים", "שביל"},
    {"layl.wav", "ليل", "سلمى النهر", "مرفأ"},
    {"bada.wav", "바다", "달빛", "섬"},
    {"yoru.wav", "よるのみなと", "凪", "灯台", 5},
};

void writeSilence(const fs::path& path, int seconds) {
    std::ofstream(path, std::ios::binary) << helmo::SoundFiles::silentWave(static_cast<unsigned>(seconds));
}

cairo_status_t append(void* text, const unsigned char* bytes, unsigned count) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

/** A sun over the sea. */
std::string coverPng() {
    auto* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 240, 240);
    auto* context = cairo_create(surface);
    cairo_set_source_rgb(context, 0.16, 0.22, 0.45);
    cairo_paint(context);
    cairo_set_source_rgb(context, 0.95, 0.55, 0.2);
    cairo_arc(context, 120, 120, 60, 0, 7);
    cairo_fill(context);
    std::string png;
    cairo_surface_write_to_png_stream(surface, append, &png);
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    return png;
}

void writeTags(const fs::path& path, const Song& song, bool withCover) {
    TagLib::RIFF::WAV::File file(path.c_str());
    auto* tag = file.ID3v2Tag();
    const auto text = [](const char* utf8) { return TagLib::String(utf8, TagLib::String::UTF8); };
    tag->setTitle(text(song.title));
    tag->setArtist(text(song.artist));
    tag->setAlbum(text(song.album));
    if (withCover) {
        const std::string png = coverPng();
        auto* picture = new TagLib::ID3v2::AttachedPictureFrame;  // the tag owns it
        picture->setMimeType("image/png");
        picture->setType(TagLib::ID3v2::AttachedPictureFrame::FrontCover);
        picture->setPicture(TagLib::ByteVector(png.data(), static_cast<unsigned>(png.size())));
        tag->addFrame(picture);
    }
    ASSERT_TRUE(file.save());
}

}  // namespace

JourneyFixture::JourneyFixture() {
    std::string name = (fs::temp_directory_path() / "helmo-journey-XXXXXX").string();
    if (!::mkdtemp(name.data())) std::abort();
    _home = name;
    _music = _home / "music of mine";
    fs::create_directories(_music);
    for (const Song& song : songs) {
        writeSilence(_music / song.file, song.seconds);
        if (song.title) writeTags(_music / song.file, song, &song == songs);
    }
}

JourneyFixture::~JourneyFixture() {
    _helmo.reset();
    fs::remove_all(_home);
}

void JourneyFixture::start(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--music", _music.string()});
    _helmo.reset();
    _helmo = std::make_unique<HelmoProcess>(arguments, _home);
}

void JourneyFixture::addSong(const std::string& file, int seconds) { writeSilence(_music / file, seconds); }

nlohmann::json JourneyFixture::perform(const Json& command) {
    Json answer = _helmo->ask(command);
    EXPECT_EQ(answer.value("ok", false), true) << command << ": " << answer;
    return answer;
}

void JourneyFixture::openSongs() {
    if (settings()["uiMode"] != 2) return tap("Songs");
    turn(-20);
    turnTo("Songs");
    press();
}

void JourneyFixture::turnTo(const std::string& text) {
    for (int turns = 0; turns < 20 && !focused().value("text", "").starts_with(text); ++turns) turn(1);
    ASSERT_TRUE(focused().value("text", "").starts_with(text)) << "the knob does not get to " << text;
}

void JourneyFixture::tap(const std::string& text) {
    perform({{"do", "tap"}, {"text", text}});
    advance(1);
}

void JourneyFixture::tapImage(const std::string& image, double seconds) {
    const auto found = nodes([&](const Json& node) { return node.value("image", "") == image; });
    ASSERT_FALSE(found.empty()) << image << " is not on the display";
    const Json& frame = found.back()["frame"];
    perform({{"do", "tap"},
             {"x", frame[0].get<double>() + frame[2].get<double>() / 2},
             {"y", frame[1].get<double>() + frame[3].get<double>() / 2},
             {"hold", seconds}});
}

void JourneyFixture::press() {
    perform({{"do", "knob"}, {"press", true}});
    advance(1);
}

void JourneyFixture::back() {
    perform({{"do", "back"}});
    advance(1);
}

std::vector<std::string> JourneyFixture::titles(bool onlyPlaying) {
    std::vector<std::string> result;
    const Json rows = perform({{"do", "rows"}})["rows"];
    for (const Json& row : rows)
        if (row["section"] > 0 && (row["playing"] || !onlyPlaying)) result.push_back(row["title"]);
    return result;
}

std::string JourneyFixture::frontScreen() { return perform({{"do", "screens"}})["stack"].back()["class"]; }

bool JourneyFixture::isOnDisplay(const std::string& text) {
    return !nodes([&](const Json& node) { return node.value("text", "") == text; }).empty();
}

std::vector<nlohmann::json> JourneyFixture::nodes(const std::function<bool(const Json&)>& wanted) {
    std::vector<Json> found;
    const std::function<void(const Json&)> collect = [&](const Json& node) {
        if (wanted(node)) found.push_back(node);
        if (node.contains("children")) std::ranges::for_each(node["children"], collect);
    };
    collect(perform({{"do", "tree"}})["root"]);
    return found;
}

nlohmann::json JourneyFixture::focused() {
    const auto found = nodes([](const Json& node) { return node.value("focused", false); });
    EXPECT_EQ(found.size(), 1u) << "focused elements on " << frontScreen();
    return found.empty() ? Json::object() : found.front();
}
