#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Host/Library/AlbumGroups.h"
#include "Host/Library/CollectionRows.h"
#include "Host/Library/Database.h"
#include "Host/Library/PlaylistStore.h"
#include "Host/Library/SortKey.h"
#include "Host/Library/TagReader.h"
#include "Host/Library/TrackCache.h"
#include "Host/Library/TrackCounts.h"

namespace helmo {

/** A music file as it lies on the disk. */
struct MusicFile {
    std::filesystem::path folder;
    std::string name;
    std::int64_t size = 0;
    std::int64_t mtime = 0;
    std::filesystem::path path() const { return folder / name; }
};

/** What can be broken in a file. */
enum class FilePart : std::int64_t { Tags = 0, Picture = 1 };

/** Writes tracks and what they belong to, and lets playlists be written. Lives within one transaction of the
   writing connection, which ends with `commit`. Throws. */
class TrackStore {
public:
    /** `cache`: what earlier transactions found; forgotten when this one isn't committed. */
    TrackStore(Database& database, const SortKey& sortKey, TrackCache& cache)
        : _database(database),
          _sortKey(sortKey),
          _cache(cache),
          _playlists(database, sortKey),
          _collections(database, sortKey, cache, _counts),
          _albums(database, _collections, _counts) {}
    ~TrackStore();
    TrackStore(const TrackStore&) = delete;
    TrackStore& operator=(const TrackStore&) = delete;
    /** Stores what was gathered and ends the transaction. */
    void commit(Transaction& transaction);

    /** Before many tracks are added to a library that never held any: drops the indices that are quicker made
       at the end. */
    void dropLateIndices();
    /** Runs a statement that makes an index. */
    void makeIndex(const std::string& sql) { _database.execute(sql); }
    /** Frees what was kept for further transactions. */
    void forgetCache() { _cache.clear(); }

    /** The row of a folder, made when it is new. */
    std::int64_t folderId(const std::filesystem::path& folder);
    /** Sets the folder's picture. */
    void setFolderPicture(std::int64_t folder, const std::string& fileName, std::int64_t stamp);

    /** What is already known of a file's place. */
    struct Place {
        /** The track there, 0 for none; left out, it is looked up. */
        std::optional<std::int64_t> track;
        /** Whether a new file may have vanished elsewhere. */
        bool mayHaveMoved = true;
    };
    struct NewTrack {
        MusicFile file;
        /** Outlives the call. */
        const TrackTags* tags;
        Place place;
    };
    /** Stores what files say, and sorts them into albums with those that lie beside them. A file that is new
       at its place, but is one that vanished elsewhere (the same name, size and time, or the same words in
       its tags and as long), is that track still: it keeps its persistent ID, its play count and its
       playlists. */
    void store(const std::vector<NewTrack>& tracks);
    /** Stores a file whose album is told by its own tags alone. */
    void store(const MusicFile& file, const TrackTags& tags) { store(file, tags, Place()); }
    void store(const MusicFile& file, const TrackTags& tags, const Place& place);
    /** Where tags of the stored files contradict each other: a line for each album of theirs, empty where
       they don't. */
    const AlbumGroups::Remarks& albumRemarks() const { return _albums.remarks(); }
    /** Shows or hides a track, as long as it is in `folder`: it may have moved. */
    void markPresent(std::int64_t track, std::int64_t folder, bool isPresent);
    /** Hides all tracks of a folder; how many were there. */
    std::int64_t hideFolder(std::int64_t folder);

    /** Remembers that a file as it is now is no track, or its picture none, and why. The track at its place
       is hidden. */
    void noteUnreadable(const MusicFile& file, const std::string& reason);
    void noteUnreadablePicture(const MusicFile& file, const std::string& reason);
    /** Whether that was noted of the file as it is now. Any connection may be asked. */
    static bool isUnreadablePicture(Database& database, const MusicFile& file);
    /** Forgets both. */
    void forgetUnreadable(std::int64_t folder, const std::string& fileName);

    /** Playlists, in the same transaction. */
    PlaylistStore& playlists() { return _playlists; }
    void notePlayed(std::int64_t persistentID);
    /** Seconds; none: there is no bookmark. */
    void setBookmark(std::int64_t persistentID, std::optional<double> time);

    /** Whether the stored keys were made as they are made now. */
    bool areSortKeysCurrent();
    /** Makes all keys anew. */
    void renewSortKeys();

private:
    using Collection = CollectionRows::Row;
    struct Membership;
    Membership membershipOf(const TrackTags& tags, const AlbumGroups::Rows& album);
    std::int64_t placeId(const std::filesystem::path& folder);
    std::vector<std::int64_t> knownTracks(const std::vector<NewTrack>& tracks);
    std::int64_t knownTrack(const MusicFile& file, const Place& place);
    AlbumGroups::Newcomer newcomerOf(const TrackTags& tags, std::int64_t track, const AlbumGroups::Key& key);
    std::vector<AlbumGroups::Rows> albumsOf(const std::vector<NewTrack>& tracks,
                                            const std::vector<std::int64_t>& known);
    void storeRow(const MusicFile& file, const TrackTags& tags, std::int64_t track,
                  const AlbumGroups::Rows& album);
    void noteGroup(std::int64_t track, bool isPresent);
    std::int64_t trackOf(const MusicFile& file, std::int64_t folder);
    void note(const MusicFile& file, FilePart part, const std::string& reason);
    Statement& kept(std::optional<Statement>& statement, const char* sql);
    void countBefore(std::int64_t track);

    Database& _database;
    const SortKey& _sortKey;
    TrackCache& _cache;
    PlaylistStore _playlists;
    TrackCounts _counts;
    CollectionRows _collections;
    AlbumGroups _albums;
    /** Tracks that were found again in this transaction. */
    std::set<std::int64_t> _found;
    /** Groups that tracks left, or came back to. */
    std::map<AlbumGroups::Key, std::set<std::int64_t>> _unsettled;
    /** The first row that this transaction added. */
    std::optional<std::int64_t> _firstAdded;
    bool _isCommitted = false;
    std::optional<Statement> _insert, _update, _mark;
};

}  // namespace helmo
