#include "Tests/Monkey/MusicFolder.h"

#include <array>
#include <fstream>
#include <string>

#include <taglib/tpropertymap.h>
#include <taglib/wavfile.h>

#include "Tests/Support/SoundFiles.h"

namespace fs = std::filesystem;

namespace {

constexpr std::array artists = {"The Breakwaters", "Ilka Wend", "Юрий Ёлкин", "Ελένη Ψαρού", "دنيا", "凪",
                                "An Octet"};
constexpr std::array albums = {"Low Tide", "A Harbour Song", "Снег", "", "灯台"};
constexpr std::array titles = {"Amber Road", "Ölberg",    "Вечер", "ليل",
                               "바다",       "7 Bridges", "",      "(what is left)"};

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
    // At so few bytes a second that hours are small.
    std::ofstream(file(number), std::ios::binary)
        << helmo::SoundFiles::silentWave(number % 9 == 0 ? 1 : 10 + number * 7, 500);
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
