#include "Host/Library/PlaylistText.h"

#include <algorithm>
#include <charconv>

#include "Platform/Foundation/TextTools.h"

namespace helmo {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string lowered(std::string_view text) {
    std::string result(text);
    for (char& letter : result)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + ('a' - 'A'));
    return result;
}

/** UTF-8 of UTF-16; halves of a character that stand alone become U+FFFD. */
std::string fromUtf16(std::string_view bytes, bool isBigEndian) {
    const auto unit = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<char32_t>(isBigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t character = unit(at);
        const bool isPair = character >= 0xD800 && character < 0xDC00 && at + 3 < bytes.size() &&
                            unit(at + 2) >= 0xDC00 && unit(at + 2) < 0xE000;
        if (isPair) {
            character = 0x10000 + ((character - 0xD800) << 10) + (unit(at + 2) - 0xDC00);
            at += 2;
        }
        text += zornic::encodedUtf8({&character, 1});
    }
    return text;
}

/** Without a byte order mark; what is UTF-16 by its mark comes as UTF-8 in `space`. */
std::string_view withoutMark(std::string_view bytes, std::string& space) {
    if (bytes.starts_with("\xef\xbb\xbf")) return bytes.substr(3);
    const bool isBigEndian = bytes.starts_with("\xfe\xff");
    if (!isBigEndian && !bytes.starts_with("\xff\xfe")) return bytes;
    return space = fromUtf16(bytes.substr(2), isBigEndian);
}

/** Calls `take` with every line that is a text and not empty, until it answers false. */
template <class Take>
void readLines(std::string_view bytes, const PlaylistFaultHandler& fault, Take&& take) {
    std::string space;
    const std::string_view text = withoutMark(bytes, space);
    std::uint32_t number = 1;
    for (std::size_t start = 0; start < text.size(); ++number) {
        const auto end = std::min(text.find_first_of("\r\n", start), text.size());
        const std::string_view line = trimmed(text.substr(start, end - start));
        start = end + (text.substr(end).starts_with("\r\n") ? 2 : 1);
        if (line.size() > longestPlaylistLine)
            fault(number, "the line is longer than 4096 bytes");
        else if (!isPlaylistText(line))
            fault(number, "the line is no text");
        else if (!line.empty() && !take(asUtf8(std::string(line)), number))
            return;
    }
}

bool isFull(std::size_t entries, std::uint32_t line, const PlaylistFaultHandler& fault) {
    if (entries < mostPlaylistEntries) return false;
    fault(line, "more than 100,000 entries, the rest is left out");
    return true;
}

class PlsReading {
public:
    explicit PlsReading(const PlaylistFaultHandler& fault) : _fault(fault) {}
    /** Whether to go on. */
    bool take(const std::string& line, std::uint32_t number) {
        if (line.front() == '[') _isOther = lowered(line) != "[playlist]";
        const auto equals = line.find('=');
        if (_isOther || line.front() == ';' || equals == std::string::npos) return true;
        const std::string key = lowered(trimmed(std::string_view(line).substr(0, equals)));
        std::string value(trimmed(std::string_view(line).substr(equals + 1)));
        if (key == "playlistname" || key == "x-gnome-title" || key == "title") _result.name = value;
        return !key.starts_with("file") || value.empty() || takeFile(key, std::move(value), number);
    }
    PlaylistText finish() {
        std::ranges::stable_sort(_files, {}, &File::position);
        for (File& file : _files) _result.locations.push_back(std::move(file.location));
        return std::move(_result);
    }

private:
    struct File {
        std::uint32_t position = 0;
        PlaylistText::Location location;
    };
    bool takeFile(std::string_view key, std::string value, std::uint32_t line) {
        const char* const end = key.data() + key.size();
        std::uint32_t position = 0;
        const auto [last, error] = std::from_chars(key.data() + 4, end, position);
        if (error != std::errc() || last != end) {
            _fault(line, "the entry has no number");
            return true;
        }
        if (isFull(_files.size(), line, _fault)) return false;
        _files.push_back({position, {std::move(value), line, false}});
        return true;
    }

    const PlaylistFaultHandler& _fault;
    PlaylistText _result;
    std::vector<File> _files;
    bool _isOther = false;
};

}  // namespace

bool isPlaylistText(std::string_view text) {
    return std::ranges::none_of(text, [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return (byte < ' ' && letter != '\t') || byte == 0x7f;
    });
}

bool isUtf8(std::string_view text) {
    constexpr std::size_t blockBytes = 16 * 1024;
    for (std::size_t start = 0, end = 0; start < text.size(); start = end) {
        end = std::min(start + blockBytes, text.size());
        // Not within a character.
        while (end < text.size() && static_cast<unsigned char>(text[end]) >= 0x80) ++end;
        const auto block = text.substr(start, end - start);
        const bool isAscii = std::ranges::all_of(block, [](char letter) { return (letter & 0x80) == 0; });
        if (!isAscii && zornic::validUtf8(block) != block) return false;
    }
    return true;
}

std::string asUtf8(std::string text) {
    if (isUtf8(text)) return text;
    std::u32string characters;
    for (const char byte : text) characters += static_cast<unsigned char>(byte);
    return zornic::encodedUtf8(characters);
}

PlaylistText parseM3u(std::string_view bytes, const PlaylistFaultHandler& fault) {
    constexpr std::string_view nameMark = "#PLAYLIST:";
    PlaylistText result;
    readLines(bytes, fault, [&](std::string line, std::uint32_t number) {
        if (line.starts_with(nameMark)) result.name = trimmed(std::string_view(line).substr(nameMark.size()));
        if (line.front() == '#') return true;
        if (isFull(result.locations.size(), number, fault)) return false;
        result.locations.push_back({std::move(line), number, false});
        return true;
    });
    return result;
}

PlaylistText parsePls(std::string_view bytes, const PlaylistFaultHandler& fault) {
    PlsReading reading(fault);
    readLines(bytes, fault,
              [&](const std::string& line, std::uint32_t number) { return reading.take(line, number); });
    return reading.finish();
}

}  // namespace helmo
