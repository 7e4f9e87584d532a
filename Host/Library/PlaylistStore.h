#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "Host/Library/Database.h"
#include "Host/Library/PlaylistFileReader.h"
#include "Host/Library/SortKey.h"

namespace helmo {

/** A playlist that is a file, or a folder of playlists that is a directory, as the database knows it. */
struct KnownPlaylist {
    std::int64_t id = 0;
    /** The folder's row; 0 at the top. */
    std::int64_t parent = 0;
    std::int64_t size = 0;
    std::int64_t mtime = 0;
    bool isPresent = false;
    bool isFolder = false;
    bool namesOthers = false;
};
/** By path. */
using KnownPlaylists = std::unordered_map<std::string, KnownPlaylist>;

/** Writes playlists. An entry whose file is no track yet is a gap: kept by its path, and the track takes its
   place when it is stored. Playlists that are no files (the driver's own, mixes) are left alone. Lives within
   one transaction. Throws. */
class PlaylistStore {
public:
    PlaylistStore(Database& database, const SortKey& sortKey) : _database(database), _sortKey(sortKey) {}

    /** Any connection may be asked. */
    static KnownPlaylists known(Database& database);
    /** The music folders that playlists were read with; empty when they are to be read again. */
    static std::string roots(Database& database);
    void setRoots(const std::string& roots);

    struct Place {
        std::filesystem::path file;
        std::int64_t size = 0;
        std::int64_t mtime = 0;
        std::int64_t parent = 0;
        bool isHidden = false;
    };
    /** Stores what a file lists. */
    void store(const Place& place, const PlaylistFile& list);
    /** Stores a folder of playlists, which holds no tracks itself; its row. */
    std::int64_t storeFolder(const std::filesystem::path& directory, std::int64_t parent);
    /** What was at one path is at another now; nothing when there is something already. */
    void move(std::int64_t playlist, const std::filesystem::path& path);
    void setParent(std::int64_t playlist, std::int64_t parent);
    void hide(std::int64_t playlist);
    /** Removes a playlist that may be deleted; never a file. */
    void remove(std::int64_t persistentID);

    /** A track is at a path where there was none: it takes the place of gaps. */
    void fillGaps(std::int64_t track, const std::filesystem::path& file);

private:
    std::int64_t rowOf(const std::filesystem::path& path);
    void clear(std::int64_t playlist);
    void storeEntries(std::int64_t playlist, const std::vector<std::string>& entries);

    Database& _database;
    const SortKey& _sortKey;
    std::optional<bool> _hasGaps;
};

}  // namespace helmo
