#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Host/Library/MediaFiles.h"
#include "Host/Library/NamesOnDisk.h"
#include "Host/Library/PlaylistFolders.h"
#include "Host/Library/SqliteMediaLibrary.h"

namespace helmo {

/** The part of a scan that takes over playlists, once the music is known: stores those that are new or
   changed, hides those that are gone, and files them into their folders. A playlist whose file was renamed,
   or is on a medium that is elsewhere now, is the same still. What can't be read stays as it was. On the
   scanning thread. */
class PlaylistScan {
public:
    /** `found`: the playlists in the music folders. `isEnding`: whether it makes no sense to go on. */
    PlaylistScan(SqliteMediaLibrary& library, const std::vector<std::filesystem::path>& roots,
                 const std::set<std::filesystem::path>& found, std::function<bool()> isEnding);
    /** Whether anything was stored that lists show. */
    bool run();

private:
    struct File {
        std::filesystem::path path;
        FileStamp stamp;
        /** What is known of it; row 0 when it is new. */
        KnownPlaylist known;
        bool isAsKnown = false;
        bool hasMoved = false;
    };
    using Stamp = std::pair<std::int64_t, std::int64_t>;

    void compare();
    void takeMoved(File& file);
    void store(const File& file);
    std::int64_t folderOf(const std::filesystem::path& playlist);
    std::int64_t storedFolder(const std::filesystem::path& directory, std::int64_t parent);
    std::optional<std::int64_t> movedFolder(const std::filesystem::path& directory);
    void hideWhatIsGone();
    void rememberRoots();
    void write(const std::function<void(PlaylistStore&)>& change);

    SqliteMediaLibrary& _library;
    const std::set<std::filesystem::path>& _found;
    const std::function<bool()> _isEnding;
    const PlaylistFileReader _reader;
    PlaylistFolders _folders;
    NamesOnDisk _names;
    KnownPlaylists _known;
    /** Known ones that were not found, by size and time. */
    std::multimap<Stamp, std::string> _missing;
    std::vector<File> _files;
    /** Rows of the folders that hold anything. */
    std::map<std::filesystem::path, std::int64_t> _folderRows;
    std::string _roots;
    /** Whether the music folders are others than before: what is out of them is to be judged again. */
    bool _haveRootsChanged = false;
    bool _hasAnyChanged = false;
    bool _hasStored = false;
};

}  // namespace helmo
