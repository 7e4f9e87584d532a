#include "Host/Library/MediaFiles.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <initializer_list>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace helmo {

namespace {

bool hasExtension(std::string_view name, std::initializer_list<std::string_view> extensions) {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return false;
    const auto extension = name.substr(dot + 1);
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
    return std::ranges::any_of(
        extensions, [&](std::string_view known) { return std::ranges::equal(extension, known, {}, lower); });
}

}  // namespace

bool isMusicFile(std::string_view name) {
    return hasExtension(name, {"mp3", "flac", "ogg", "oga", "opus", "m4a", "m4b", "aac", "wav", "aiff", "aif",
                               "wv",  "ape",  "mpc", "wma", "mka",  "mp4", "m4v", "mov", "mkv", "webm"});
}

bool isAudiobookFile(std::string_view name) { return hasExtension(name, {"m4b"}); }

bool isSoundFile(std::string_view name) { return hasExtension(name, {"m4a", "m4b", "mka"}); }

bool isMatroskaFile(std::string_view name) { return hasExtension(name, {"mka", "mkv", "webm"}); }

bool isPictureFile(std::string_view name) { return hasExtension(name, {"jpg", "jpeg", "png", "webp"}); }

bool isPlaylistFile(std::string_view name) { return hasExtension(name, {"m3u", "m3u8", "pls", "xspf"}); }

std::optional<FileStamp> FileStamp::of(const std::filesystem::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileStamp{
        static_cast<std::int64_t>(status.st_size),
        static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec,
        static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
}

std::string whyUnreachable(const std::filesystem::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    char byte = 0;
    const bool isReached = descriptor >= 0 && ::read(descriptor, &byte, 1) >= 0;
    const int error = isReached ? 0 : errno;
    if (descriptor >= 0) ::close(descriptor);
    return error == 0 ? std::string() : std::generic_category().message(error);
}

}  // namespace helmo
