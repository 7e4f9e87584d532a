#include "Tests/Monkey/MusicFolder.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>

#include <taglib/tpropertymap.h>
#include <taglib/wavfile.h>

namespace fs = std::filesystem;

namespace {

constexpr std::array artists = {"The Breakwaters", "Ilka Wend", "Юрий Ёлкин", "Ελένη Ψαρού", "دنيا", "凪",
                                "An Octet"};
constexpr std::array albums = {"Low Tide", "A Harbour Song", "Снег", "", "灯台"};
constexpr std::array titles = {"Amber Road", "Ölberg",    "Вечер", "ليل",
                               "바다",       "7 Bridges", "",      "(what is left)"};

/** Silence, at so few bytes a second that hours are small. */
void writeSilence(const fs::path& path, unsigned seconds) {
    constexpr std::uint32_t rate = 500;
    const std::uint32_t bytes = rate * seconds;
    const std::uint32_t fields[] = {bytes + 36, 16, 1 | 1 << 16, rate, rate, 1 | 8 << 16, bytes};
    constexpr std::size_t places[] = {4, 16, 20, 24, 28, 32, 40};
    std::string content = "RIFF....WAVEfmt ....................data....";
    for (std::size_t i = 0; i < std::size(fields); ++i) std::memcpy(&content[places[i]], &fields[i], 4);
    std::ofstream(path, std::ios::binary) << content << std::string(bytes, '\x80');
}

template <class List>
std::string one(const List& list, unsigned number) {
    return list[number % list.size()];
}

}  // namespace

MusicFolder::MusicFolder() {
    constexpr unsigned away = 5;
    fs::create_directories(path() / "with cover");
    for (unsigned number = 0; number + away < songs; ++number) write(number);
    fs::copy_file(MONKEY_COVER, path() / "with cover" / "cover.png");
}

fs::path MusicFolder::file(unsigned number) const {
    const fs::path folder = number % 2 == 0 ? path() / "with cover" : path();
    return folder / (std::to_string(number) + ".wav");
}

void MusicFolder::write(unsigned number) const {
    writeSilence(file(number), number % 9 == 0 ? 1 : 10 + number * 7);
    TagLib::RIFF::WAV::File wave(file(number).c_str());
    TagLib::PropertyMap tags;
    const auto set = [&](const char* name, const std::string& text) {
        if (!text.empty()) tags.insert(name, TagLib::StringList(TagLib::String(text, TagLib::String::UTF8)));
    };
    set("TITLE", number == 13 ? std::string(5000, 'W') : one(titles, number) + " " + std::to_string(number));
    set("ARTIST", one(artists, number / 2));
    set("ALBUM", one(albums, number / 3));
    wave.setProperties(tags);
    wave.save();
}

void MusicFolder::toggle(unsigned number) {
    if (!fs::remove(file(number))) write(number);
}
