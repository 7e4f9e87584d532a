#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace helmo {

/** Whether a file is music (a film with sound is), a book, a picture or a playlist, by its name's extension
   in any case. */
bool isMusicFile(std::string_view name);
bool isAudiobookFile(std::string_view name);
/** Of the kinds that may hold films as well: whether the name says that it is sound alone, or Matroska. */
bool isSoundFile(std::string_view name);
bool isMatroskaFile(std::string_view name);
bool isPictureFile(std::string_view name);
bool isPlaylistFile(std::string_view name);

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

/** Why a file's bytes can't be had: no permission, a failing disk, no file at all. Empty when the first byte
   can be read or there is none. Waits for no pipe and no device. */
std::string whyUnreachable(const std::filesystem::path& file);

}  // namespace helmo
