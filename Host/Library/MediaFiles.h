#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace helmo {

/** Whether a file is music, a picture or a playlist, by its extension in any case. */
bool isMusicFile(const std::filesystem::path& file);
bool isPictureFile(const std::filesystem::path& file);
bool isPlaylistFile(const std::filesystem::path& file);

/** How a file is seen to have changed without reading it, and which file it is. */
struct FileStamp {
    /** Bytes. */
    std::int64_t size = 0;
    /** Nanoseconds since 1970. */
    std::int64_t mtime = 0;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    /** None when there is no such file or folder, or it can't be reached. Follows links. */
    static std::optional<FileStamp> of(const std::filesystem::path& path);
};

}  // namespace helmo
