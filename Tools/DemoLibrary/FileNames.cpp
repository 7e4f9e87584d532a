#include "Tools/DemoLibrary/FileNames.h"

#include "Tools/DemoLibrary/AudioEncoder.h"

namespace helmo::demo {

namespace {

constexpr std::size_t longestName = 120;  // bytes

std::string twoDigits(int number) { return std::to_string(number + 100).substr(1); }

std::filesystem::path folderOfKind(Kind kind) {
    switch (kind) {
        case Kind::Audiobook:
            return "Audiobooks";
        case Kind::Podcast:
            return "Podcasts";
        case Kind::Lecture:
            return "Lectures";
        case Kind::Music:
            break;
    }
    return {};
}

bool isInsideCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U; }

}  // namespace

std::string FileNames::sanitized(std::string_view title) {
    std::string name;
    for (const char byte : title) {
        const bool isControl = static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f;
        const bool isReserved = std::string_view("/\\:*?\"<>|").find(byte) != std::string_view::npos;
        name += isControl || isReserved ? '_' : byte;
    }
    if (name.size() > longestName) {
        std::size_t end = longestName;
        while (end > 0 && isInsideCharacter(name[end])) --end;
        name.resize(end);
    }
    while (!name.empty() && (name.back() == '.' || name.back() == ' ')) name.pop_back();
    if (name.empty()) return "_";
    if (name.front() == '.') name.front() = '_';
    return name;
}

std::filesystem::path FileNames::folderOf(const Album& album) {
    return folderOfKind(album.kind) / sanitized(album.artist) / sanitized(album.title);
}

std::filesystem::path FileNames::fileOf(const Album& album, std::size_t index, Format format) {
    const Track& track = album.tracks[index];
    std::string name = album.discCount() > 1 ? std::to_string(track.disc) + "-" : std::string();
    name += twoDigits(album.numberOfTrack(index)) + " " + track.title;
    name = sanitized(name) + ".";
    return folderOf(album) / name.append(AudioEncoder::extensionOf(format));
}

}  // namespace helmo::demo
