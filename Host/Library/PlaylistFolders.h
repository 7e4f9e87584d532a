#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "Host/Library/PlaylistFileReader.h"
#include "Host/Library/Readers.h"

namespace helmo {

/** Which directories are folders of playlists to the driver. One that holds playlists is, when no music lies
   in it or below it: playlists beside an album or an artist's albums stand at the top, as does what lies in a
   music folder itself. Below a directory called "Playlists" every directory is one, whatever else it holds,
   and that directory itself is none. */
class PlaylistFolders {
public:
    /** `playlists`: all that were found, with their paths. */
    PlaylistFolders(const std::set<std::filesystem::path>& playlists, const PlaylistFileReader& reader,
                    std::shared_ptr<Readers> readers);

    /** The folders that a playlist is in, outermost first; empty when it stands at the top, as hidden ones
       do. */
    std::vector<std::filesystem::path> above(const std::filesystem::path& playlist);

private:
    bool isForPlaylists(const std::filesystem::path& directory);

    const PlaylistFileReader& _reader;
    const std::shared_ptr<Readers> _readers;
    /** Those that hold playlists, and what was found out of them. */
    std::map<std::filesystem::path, std::optional<bool>> _directories;
};

/** Whether the driver doesn't want to see a playlist: its file's name begins with a dot. */
bool isHiddenPlaylist(const std::filesystem::path& playlist);

}  // namespace helmo
