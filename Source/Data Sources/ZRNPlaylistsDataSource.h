#pragma once

#include <functional>
#include <set>

#include "Data Sources/ZRNQueryDataSource.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/EvictingCache.h"
#include "Platform/Media/MediaPlaylist.h"

namespace zornic {

/** The playlists and folders of one level of the tree: the top one, unless the query names a folder. What
   costs a walk over a playlist's items is computed when asked for and kept until the next invalidation. Main
   thread. */
class ZRNPlaylistsDataSource : public ZRNQueryDataSource {
public:
    /** Sees a playlist; setting `stop` ends the walk. */
    using PlaylistVisitor = std::function<void(const std::shared_ptr<MediaPlaylist>& playlist, bool& stop)>;

    using ZRNQueryDataSource::ZRNQueryDataSource;
    void didMake() override;

    bool isFolderForEntityAtIndex(std::uint64_t index);
    /** Number of songs and their length in seconds; 0 for a folder. Computed in the background while the
     * caller waits. */
    std::uint64_t countForEntityAtIndex(std::uint64_t index);
    double durationForEntityAtIndex(std::uint64_t index);
    /** The item whose picture stands for the row, of a folder's first playlist for the folder; none. */
    std::shared_ptr<MediaItem> representativeItemForEntityAtIndex(std::uint64_t index);
    /** What is at hand without computing anything; 0 or none. */
    std::uint64_t cachedCountForEntityAtIndex(std::uint64_t index);
    double cachedDurationForEntityAtIndex(std::uint64_t index);
    std::shared_ptr<MediaItem> cachedRepresentativeItemForEntityAtIndex(std::uint64_t index);
    void resetCaches();

    /** Only what the driver made on this device. */
    bool canEditEntityAtIndex(std::uint64_t index) override;
    int editingTypeForEntityAtIndex(std::uint64_t index) override;
    /** Refused, without a word, for another library's playlist. */
    void deleteEntityAtIndex(std::uint64_t index) override;
    /** Whether the queue was started from this very playlist. */
    bool entityIsNowPlayingAtIndex(std::uint64_t index) override;
    bool showsIndexBar() override { return false; }

    void _invalidateCalculatedEntities() override;
    /** Any thread: reloads on the main thread while there is a cloud library. */
    void _networkTypeDidChangeNotification(const Notification& notification);
    /** The row's playlist, or the first one inside its folder; none for a folder without any. */
    std::shared_ptr<MediaPlaylist> _representativePlaylistForEntityAtIndex(std::uint64_t index);
    /** Visits the playlists in and below `root`, each folder's contents before what follows the folder. */
    void _breadthFirstVisitNonFolderPlaylistsWithRootPlaylistVisitor(
        const std::shared_ptr<MediaPlaylist>& root, const PlaylistVisitor& visitor);
    /** One step of that walk. `visited`: persistent IDs of all roots so far. */
    void _bfsNonFolderPlaylistsWithRootPlaylistVisitedPlaylistPIDsStopVisitor(
        const std::shared_ptr<MediaPlaylist>& root, std::set<PersistentID>& visited, bool& stop,
        const PlaylistVisitor& visitor);

private:
    template <class T>
    using RowCache = EvictingCache<std::uint64_t, T>;
    /** The cached value of a row, or what `compute` makes of its playlist's items; a value of nothing is no
     * hit. */
    template <class T>
    T valueForEntityAtIndex(std::uint64_t index, RowCache<T>& cache, T (*compute)(const MediaQuery& items));
    std::shared_ptr<MediaPlaylist> playlistAtIndex(std::uint64_t index);
    /** The same, when it is in the device's own library. */
    std::shared_ptr<MediaPlaylist> devicePlaylistAtIndex(std::uint64_t index);
    /** The folders around a step of the walk, innermost first. */
    struct WalkedPath {
        PersistentID playlist;
        const WalkedPath* above;
    };
    /** A folder that a library puts inside itself is not entered again. */
    void walk(const std::shared_ptr<MediaPlaylist>& root, const WalkedPath* above,
              std::set<PersistentID>& visited, bool& stop, const PlaylistVisitor& visitor);
    std::shared_ptr<const MediaEntityList> childrenOfPlaylist(PersistentID playlist) const;

    static constexpr std::size_t rowsKept = 4096;
    /** Whether the query named a folder from the beginning. */
    bool _hasParentPlaylist = false;
    RowCache<double> _cachedDurations{rowsKept};
    RowCache<std::uint64_t> _cachedCounts{rowsKept};
    RowCache<std::shared_ptr<MediaItem>> _cachedRepresentativeItems{rowsKept};
    SerialQueue _cacheQueue{"ZRNPlaylistsDataSource.cache", QueuePriority::Background};
    Observation _networkObservation;
};

}  // namespace zornic
