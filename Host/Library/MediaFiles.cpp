#include "Host/Library/MediaFiles.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace helmo {

namespace {

bool hasExtension(const std::filesystem::path& file, std::initializer_list<std::string_view> extensions) {
    std::string extension = file.extension().string();
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::ranges::find(extensions, extension) != extensions.end();
}

}  // namespace

bool isMusicFile(const std::filesystem::path& file) {
    return hasExtension(file, {".mp3", ".flac", ".ogg", ".oga", ".opus", ".m4a", ".m4b", ".aac", ".wav",
                               ".aiff", ".aif", ".wv", ".ape", ".mpc", ".wma", ".mka"});
}

bool isPictureFile(const std::filesystem::path& file) {
    return hasExtension(file, {".jpg", ".jpeg", ".png", ".webp"});
}

bool isPlaylistFile(const std::filesystem::path& file) { return hasExtension(file, {".m3u", ".m3u8"}); }

std::optional<FileStamp> FileStamp::of(const std::filesystem::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileStamp{
        static_cast<std::int64_t>(status.st_size),
        static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec,
        static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
}

}  // namespace helmo
