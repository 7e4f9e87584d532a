#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace helmo::demo {

/** A playlist of the demo library. */
struct Playlist {
    enum class Form { M3u8, Xspf };
    struct Entry {
        std::string album;
        /** From 0. */
        std::size_t track;
    };

    /** Inside the folder of playlists; empty for the folder itself. */
    std::string folder;
    std::string name;
    Form form;
    std::vector<Entry> entries;

    /** Where it lies inside the library. */
    std::filesystem::path file() const;
    /** The file's contents; `pathOf` finds a track inside the library by its album and number. */
    std::string contents(const std::function<std::filesystem::path(const std::string& album,
                                                                   std::size_t track)>& pathOf) const;
};

const std::vector<Playlist>& playlists();

}  // namespace helmo::demo
