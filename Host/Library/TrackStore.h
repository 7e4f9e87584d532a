#pragma once

#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

#include "Host/Library/Database.h"
#include "Host/Library/PlaylistFileReader.h"
#include "Host/Library/SortKey.h"
#include "Host/Library/TagReader.h"

namespace helmo {

/** A music file as the database knows it. */
struct KnownFile {
    std::int64_t id = 0;
    std::int64_t size = 0;
    std::int64_t mtime = 0;
    bool isPresent = false;
};
using KnownFiles = std::unordered_map<std::string, KnownFile>;

/** A music file as it lies on the disk. */
struct MusicFile {
    std::filesystem::path folder;
    std::string name;
    std::int64_t size = 0;
    std::int64_t mtime = 0;
    std::filesystem::path path() const { return folder / name; }
};

/** Writes tracks, what they belong to, and playlists. Lives within one transaction of the writing connection:
   what it remembers of rows is worth nothing after a roll-back. Throws. */
class TrackStore {
public:
    TrackStore(Database& database, const SortKey& sortKey) : _database(database), _sortKey(sortKey) {}

    /** Files of a folder by name. */
    KnownFiles filesOfFolder(const std::filesystem::path& folder);
    /** All folders that ever held music, by ID. */
    std::unordered_map<std::int64_t, std::string> folders();
    /** The row of a folder, made when it is new. */
    std::int64_t folderId(const std::filesystem::path& folder);
    /** Sets the folder's picture; whether that was a change. */
    bool setFolderPicture(std::int64_t folder, const std::string& fileName, std::int64_t stamp);

    /** Stores what a file says. A file that is new at its place, but is one that vanished elsewhere (same
       name, size and time), is that track still: it keeps its persistent ID, its play count and its
       playlists. */
    void store(const MusicFile& file, const TrackTags& tags);
    void markPresent(std::int64_t track, bool isPresent);
    /** Hides all tracks of a folder; how many were there. */
    std::int64_t hideFolder(std::int64_t folder);

    /** Playlist files by path. */
    KnownFiles playlistFiles();
    /** Stores a playlist file; entries that are no known tracks are left out. */
    void storePlaylist(const std::filesystem::path& file, std::int64_t size, std::int64_t mtime,
                       const PlaylistFile& list);
    void hidePlaylist(std::int64_t playlist);
    /** Removes a playlist that may be deleted. */
    void removePlaylist(std::int64_t persistentID);
    void notePlayed(std::int64_t persistentID);

    /** Whether the stored keys were made as they are made now. */
    bool areSortKeysCurrent();
    /** Makes all keys anew. */
    void renewSortKeys();

private:
    struct Collection {
        std::int64_t id = 0;
        std::string key;
    };
    Collection collection(std::int64_t kind, const std::string& name, const std::string& sortName,
                          const Collection& owner);
    Collection collection(std::int64_t kind, const std::string& name, const std::string& sortName) {
        return collection(kind, name, sortName, Collection());
    }
    Collection storedCollection(std::int64_t kind, const std::string& folded, const std::string& name,
                                const std::string& sortName, const Collection& owner);
    void sortAgain(std::int64_t kind, std::int64_t id, const std::string& sortName, const std::string& key);
    std::int64_t trackOf(const MusicFile& file, std::int64_t folder);
    std::int64_t movedTrack(const MusicFile& file);
    std::int64_t trackAt(const std::filesystem::path& file);

    Database& _database;
    const SortKey& _sortKey;
    std::unordered_map<std::string, Collection> _collections;
};

}  // namespace helmo
