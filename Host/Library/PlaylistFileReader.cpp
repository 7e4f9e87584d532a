#include "Host/Library/PlaylistFileReader.h"

#include <algorithm>

#include "Host/Library/PictureFinder.h"
#include "Host/Library/TagText.h"
#include "Platform/Foundation/TextTools.h"

namespace helmo {

namespace {

constexpr std::size_t maximumFileBytes = 4 * 1024 * 1024;
constexpr std::size_t maximumLineBytes = 4096;
constexpr std::size_t maximumProblems = 20;

/** Text as UTF-8: what isn't is taken for Latin-1, as older programs wrote it. */
std::string asUtf8(const std::string& text) {
    if (zornic::validUtf8(text) == text) return text;
    std::u32string characters;
    for (const char byte : text) characters += static_cast<unsigned char>(byte);
    return zornic::encodedUtf8(characters);
}

bool isNetworkAddress(const std::string& line) { return line.find("://") != std::string::npos; }

bool isWindowsDrive(const std::string& line) {
    return line.size() > 2 && std::isalpha(static_cast<unsigned char>(line[0])) && line[1] == ':' &&
           (line[2] == '\\' || line[2] == '/');
}

std::string trimmed(const std::string& line) {
    const auto first = line.find_first_not_of(" \t\r");
    if (first == std::string::npos) return {};
    return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
}

class Reading {
public:
    explicit Reading(const std::filesystem::path& file) : _file(file) {
        _result.name = cleanTagText(file.stem().string());
    }

    void line(std::string text, std::size_t number) {
        if (text.size() > maximumLineBytes) return problem(number, "the line is longer than 4096 bytes");
        if (text.find('\0') != std::string::npos) return problem(number, "the line holds zero bytes");
        text = trimmed(asUtf8(text));
        if (text.starts_with("#PLAYLIST:")) {
            if (auto name = cleanTagText(text.substr(10)); !name.empty()) _result.name = std::move(name);
        }
        if (text.empty() || text.front() == '#' || isNetworkAddress(text)) return;
        if (isWindowsDrive(text)) text.erase(0, 2);
        std::ranges::replace(text, '\\', '/');
        _result.entries.push_back((_file.parent_path() / text).lexically_normal());
    }
    bool isFull() const { return _result.entries.size() >= mostPlaylistEntries; }
    void problem(std::size_t number, const std::string& reason) {
        if (_result.problems.size() < maximumProblems)
            _result.problems.push_back(_file.string() + ":" + std::to_string(number) + ": " + reason);
    }
    PlaylistFile take() { return std::move(_result); }

private:
    const std::filesystem::path& _file;
    PlaylistFile _result;
};

}  // namespace

PlaylistFile readPlaylistText(std::string_view text, const std::filesystem::path& file) {
    Reading reading(file);
    if (text.empty()) reading.problem(1, "empty, unreadable or larger than 4 MB");
    if (text.starts_with("\xef\xbb\xbf")) text.remove_prefix(3);
    std::size_t number = 1;
    for (std::size_t start = 0; start < text.size(); ++number) {
        const auto end = std::min(text.find('\n', start), text.size());
        if (reading.isFull()) {
            reading.problem(number, "more than 10,000 entries, the rest is left out");
            break;
        }
        reading.line(std::string(text.substr(start, end - start)), number);
        start = end + 1;
    }
    return reading.take();
}

PlaylistFile readPlaylistFile(const std::filesystem::path& file) {
    return readPlaylistText(fileBytes(file, maximumFileBytes), file);
}

}  // namespace helmo
