#include "Tools/DemoLibrary/Playlists.h"

#include "Tools/DemoLibrary/FileNames.h"

namespace helmo::demo {

namespace {

/** A path as part of an address. */
std::string escaped(const std::string& path) {
    constexpr std::string_view plain = "-._~/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isPlain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= '0' && byte <= '9') || plain.find(character) != std::string_view::npos;
        if (isPlain)
            result += character;
        else
            result += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return result;
}

std::string asM3u8(const std::string& name, const std::vector<std::string>& paths) {
    std::string text = "#EXTM3U\n#PLAYLIST:" + name + "\n";
    for (const std::string& path : paths) text += path + "\n";
    return text;
}

std::string asXspf(const std::string& name, const std::vector<std::string>& paths) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<playlist version=\"1\" xmlns=\"http://xspf.org/ns/0/\">\n  <title>" +
        name + "</title>\n  <trackList>\n";
    for (const std::string& path : paths)
        text += "    <track><location>" + escaped(path) + "</location></track>\n";
    return text + "  </trackList>\n</playlist>\n";
}

}  // namespace

std::filesystem::path Playlist::file() const {
    const std::string ending = form == Form::M3u8 ? ".m3u8" : ".xspf";
    return std::filesystem::path("Playlists") / folder / (FileNames::sanitized(name) + ending);
}

std::string Playlist::contents(
    const std::function<std::filesystem::path(const std::string& album, std::size_t track)>& pathOf) const {
    std::vector<std::string> paths;
    for (const auto& [album, track] : entries)
        paths.push_back(pathOf(album, track).lexically_relative(file().parent_path()).string());
    return form == Form::M3u8 ? asM3u8(name, paths) : asXspf(name, paths);
}

const std::vector<Playlist>& playlists() {
    using enum Playlist::Form;
    static const std::vector<Playlist> all = {
        {"",
         "Sunday Kitchen",
         M3u8,
         {{"L'Été des hirondelles", 0},
          {"雨の日の喫茶店", 1},
          {"Harbour Lights at Noon", 0},
          {"느린 오후", 1},
          {"Θάλασσα το πρωί", 2},
          {"Paper Harbours", 0}}},
        {"",
         "For the First Snow",
         Xspf,
         {{"Winter with Friends", 0}, {"Снег над каналом", 2}, {"Paper Harbours", 1}}},
        {"Road Trips",
         "Coast Road",
         M3u8,
         {{"Saltmarsh", 1},
          {"Tin Roof Ballads", 1},
          {"Θάλασσα το πρωί", 0},
          {"Late Drive: Music for Empty Roads", 2},
          {"حديقة الياسمين", 0}}},
        {"Road Trips",
         "Past Midnight",
         Xspf,
         {{"Late Drive: Music for Empty Roads", 0},
          {"Night Shift Greenhouse", 3},
          {"Die Stille zwischen den Bahnhöfen", 6},
          {"Slow Signals", 1},
          {"Die Stille zwischen den Bahnhöfen", 0}}},
    };
    return all;
}

}  // namespace helmo::demo
