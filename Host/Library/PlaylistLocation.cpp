#include "Host/Library/PlaylistLocation.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace helmo {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/** Of "http:" and the like; a single letter is a drive. Empty without one. */
std::string_view schemeOf(std::string_view text) {
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || colon < 2 || !isLetter(text.front())) return {};
    const auto scheme = text.substr(0, colon);
    const auto isPart = [](char c) {
        return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
    };
    return std::ranges::all_of(scheme, isPart) ? scheme : std::string_view();
}

bool isFileScheme(std::string_view scheme) {
    return std::ranges::equal(scheme, std::string_view("file"), {},
                              [](char c) { return static_cast<char>(c | 0x20); });
}

/** What "%20" and the like stand for; a "%" that begins no such thing stands for itself. */
std::string decodedPercents(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        unsigned char byte = 0;
        const char* const digits = text.data() + at + 1;
        if (text[at] == '%' && at + 2 < text.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            result += static_cast<char>(byte);
            at += 2;
        } else {
            result += text[at];
        }
    }
    return result;
}

bool isDrive(std::string_view text) {
    return text.size() > 2 && isLetter(text[0]) && text[1] == ':' && (text[2] == '/' || text[2] == '\\');
}

/** The path of a file address behind its scheme; none when the file is on another machine. */
std::optional<std::string> pathOfAddress(std::string_view text) {
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const auto host = text.substr(0, text.find('/'));
        if (!host.empty() && !isDrive(text) && host != "localhost") return std::nullopt;
        if (!isDrive(text)) text.remove_prefix(host.size());
    }
    std::string path = decodedPercents(text);
    if (path.starts_with('/') && isDrive(std::string_view(path).substr(1))) path.erase(0, 1);
    return path;
}

/** The text as a path, slashes as they are written; none for what is elsewhere. */
std::optional<std::string> writtenPath(const PlaylistText::Location& location) {
    const std::string& text = location.text;
    const auto scheme = schemeOf(text);
    if (isFileScheme(scheme)) return pathOfAddress(std::string_view(text).substr(scheme.size() + 1));
    const bool isNetwork = text.find("://") != std::string::npos || text.starts_with("\\\\") ||
                           (location.isUri && (!scheme.empty() || text.starts_with("//")));
    if (isNetwork) return std::nullopt;
    return location.isUri ? decodedPercents(text) : text;
}

/** A drive is the music folder, or what that lies in when the path begins with the music folder's own name.
 */
std::filesystem::path driveOf(std::string_view path, const std::filesystem::path& root) {
    return path.substr(0, path.find('/')) == root.filename().native() ? root.parent_path() : root;
}

/** `folder` with what is in relation to it. Most are plain names, and a list may be long. */
std::string joinedPath(const std::filesystem::path& folder, const std::string& text) {
    const bool isPlain = text.find("//") == std::string::npos && text.find("/.") == std::string::npos &&
                         !text.starts_with('.') && !text.empty();
    if (!isPlain) return (folder / text).lexically_normal().native();
    if (text.starts_with('/')) return text;
    const std::string& start = folder.native();
    return start.ends_with('/') ? start + text : start + '/' + text;
}

}  // namespace

bool isElsewhere(const PlaylistText::Location& location) { return !writtenPath(location); }

std::optional<std::string> pathOfLocation(const PlaylistText::Location& location,
                                          const PlaylistPlace& place) {
    auto written = writtenPath(location);
    if (!written || !isPlaylistText(*written)) return std::nullopt;
    std::string text = asUtf8(std::move(*written));
    const bool isOnDrive = isDrive(text) || text.starts_with('\\');
    if (isDrive(text)) text.erase(0, 2);
    std::ranges::replace(text, '\\', '/');
    if (isOnDrive) text.erase(0, text.find_first_not_of('/'));
    auto path = joinedPath(isOnDrive ? driveOf(text, place.root) : place.folder, text);
    return path.ends_with('/') ? std::nullopt : std::optional(std::move(path));
}

}  // namespace helmo
