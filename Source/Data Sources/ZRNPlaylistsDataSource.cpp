#include "Data Sources/ZRNPlaylistsDataSource.h"

#include "Platform/LibraryKit/RestrictionsMonitor.h"
#include "Platform/Media/CloudController.h"
#include "Platform/Media/MediaLibrary.h"
#include "Platform/Services/StoreClientNetworkObserver.h"
#include "Utilities/ZRNObservation.h"
#include "Utilities/ZRNShared.h"

namespace zornic {

void ZRNPlaylistsDataSource::didMake() {
    ZRNQueryDataSource::didMake();
    const char* const parent = MediaPlaylistProperty::ParentPersistentID;
    _hasParentPlaylist = query()->predicateForProperty(parent).has_value();
    if (!_hasParentPlaylist) query()->addFilterPredicate(MediaPredicate::property(parent, PersistentID{0}));
    _networkObservation = ZRNObserveFromAnyThread(StoreClientNetworkTypeDidChangeNotification,
                                                  StoreClientNetworkObserver::shared().get(), this,
                                                  &ZRNPlaylistsDataSource::_networkTypeDidChangeNotification);
}

void ZRNPlaylistsDataSource::_networkTypeDidChangeNotification(const Notification&) {
    mainQueue().async([self = strong(this)] {
        if (CloudController::shared().isCloudEnabled()) self->invalidate();
    });
}

std::shared_ptr<MediaPlaylist> ZRNPlaylistsDataSource::playlistAtIndex(std::uint64_t index) {
    return std::dynamic_pointer_cast<MediaPlaylist>(entityAtIndex(index));
}

std::shared_ptr<MediaPlaylist> ZRNPlaylistsDataSource::devicePlaylistAtIndex(std::uint64_t index) {
    const auto playlist = playlistAtIndex(index);
    const auto library = playlist ? playlist->library() : nullptr;
    return library && library->isDeviceLibrary() ? playlist : nullptr;
}

bool ZRNPlaylistsDataSource::isFolderForEntityAtIndex(std::uint64_t index) {
    const auto playlist = playlistAtIndex(index);
    return playlist && playlist->isFolder();
}

// Counts, durations and pictures

template <class T>
T ZRNPlaylistsDataSource::valueForEntityAtIndex(std::uint64_t index, RowCache<T>& cache,
                                                T (*compute)(const MediaQuery& items)) {
    T value = cache.get(index).value_or(T{});
    if (value != T{}) return value;
    // The rows are the calling thread's; only their items are walked elsewhere.
    const auto playlist = playlistAtIndex(index);
    _cacheQueue.sync([&] {
        value = cache.get(index).value_or(T{});
        if (value != T{} || !playlist || playlist->isFolder()) return;
        value = compute(*playlist->itemsQuery());
        cache.set(index, value);
    });
    return value;
}

std::uint64_t ZRNPlaylistsDataSource::countForEntityAtIndex(std::uint64_t index) {
    return valueForEntityAtIndex<std::uint64_t>(
        index, _cachedCounts, [](const MediaQuery& items) { return items._countOfItems(); });
}

double ZRNPlaylistsDataSource::durationForEntityAtIndex(std::uint64_t index) {
    return valueForEntityAtIndex<double>(index, _cachedDurations, [](const MediaQuery& items) {
        return items.totalAggregate(MediaItemProperty::PlaybackDuration);
    });
}

std::shared_ptr<MediaItem> ZRNPlaylistsDataSource::representativeItemForEntityAtIndex(std::uint64_t index) {
    if (auto known = cachedRepresentativeItemForEntityAtIndex(index)) return known;
    const auto playlist = _representativePlaylistForEntityAtIndex(index);
    if (!playlist) return nullptr;
    const auto items = playlist->items();
    for (std::uint64_t at = 0; at < items->count(); ++at) {
        auto item = std::dynamic_pointer_cast<MediaItem>(items->entityAtIndex(at));
        if (!item) continue;
        _cachedRepresentativeItems.set(index, item);
        return item;
    }
    return nullptr;
}

std::uint64_t ZRNPlaylistsDataSource::cachedCountForEntityAtIndex(std::uint64_t index) {
    return _cachedCounts.get(index).value_or(0);
}

double ZRNPlaylistsDataSource::cachedDurationForEntityAtIndex(std::uint64_t index) {
    return _cachedDurations.get(index).value_or(0);
}

std::shared_ptr<MediaItem> ZRNPlaylistsDataSource::cachedRepresentativeItemForEntityAtIndex(
    std::uint64_t index) {
    return _cachedRepresentativeItems.get(index).value_or(nullptr);
}

void ZRNPlaylistsDataSource::resetCaches() {
    _cachedDurations.removeAll();
    _cachedCounts.removeAll();
    _cachedRepresentativeItems.removeAll();
}

void ZRNPlaylistsDataSource::_invalidateCalculatedEntities() {
    ZRNQueryDataSource::_invalidateCalculatedEntities();
    resetCaches();
}

// The tree

std::shared_ptr<MediaPlaylist> ZRNPlaylistsDataSource::_representativePlaylistForEntityAtIndex(
    std::uint64_t index) {
    std::shared_ptr<MediaPlaylist> first;
    const auto root = playlistAtIndex(index);
    if (!root) return nullptr;
    _breadthFirstVisitNonFolderPlaylistsWithRootPlaylistVisitor(root, [&](const auto& playlist, bool& stop) {
        first = playlist;
        stop = true;
    });
    return first;
}

void ZRNPlaylistsDataSource::_breadthFirstVisitNonFolderPlaylistsWithRootPlaylistVisitor(
    const std::shared_ptr<MediaPlaylist>& root, const PlaylistVisitor& visitor) {
    std::set<PersistentID> visited;
    bool stop = false;
    _bfsNonFolderPlaylistsWithRootPlaylistVisitedPlaylistPIDsStopVisitor(root, visited, stop, visitor);
}

void ZRNPlaylistsDataSource::_bfsNonFolderPlaylistsWithRootPlaylistVisitedPlaylistPIDsStopVisitor(
    const std::shared_ptr<MediaPlaylist>& root, std::set<PersistentID>& visited, bool& stop,
    const PlaylistVisitor& visitor) {
    walk(root, nullptr, visited, stop, visitor);
}

void ZRNPlaylistsDataSource::walk(const std::shared_ptr<MediaPlaylist>& root, const WalkedPath* above,
                                  std::set<PersistentID>& visited, bool& stop,
                                  const PlaylistVisitor& visitor) {
    const WalkedPath path{root->persistentID(), above};
    for (const auto* step = above; step; step = step->above)
        if (step->playlist == path.playlist) return;
    visited.insert(path.playlist);
    const bool isFolder = root->isFolder();
    if (!isFolder) visitor(root, stop);
    if (stop) return;
    const auto children = childrenOfPlaylist(path.playlist);
    // Only folders hold others, so that this sees nothing where the tree is sound.
    for (std::uint64_t at = 0; at < children->count() && !isFolder; ++at) {
        const auto child = std::dynamic_pointer_cast<MediaPlaylist>(children->entityAtIndex(at));
        if (!child || visited.contains(child->persistentID())) continue;
        visitor(child, stop);
        if (stop) return;
    }
    for (std::uint64_t at = 0; at < children->count() && !stop; ++at)
        if (const auto child = std::dynamic_pointer_cast<MediaPlaylist>(children->entityAtIndex(at)))
            walk(child, &path, visited, stop, visitor);
}

std::shared_ptr<const MediaEntityList> ZRNPlaylistsDataSource::childrenOfPlaylist(
    PersistentID playlist) const {
    const auto children = query()->copy();
    children->setFilterPredicateForProperty(MediaPlaylistProperty::ParentPersistentID, playlist);
    return children->collections();
}

// Deleting, playing

bool ZRNPlaylistsDataSource::canEditEntityAtIndex(std::uint64_t index) {
    const auto playlist = devicePlaylistAtIndex(index);
    return playlist && playlist->isDeletable();
}

int ZRNPlaylistsDataSource::editingTypeForEntityAtIndex(std::uint64_t index) {
    if (!RestrictionsMonitor::shared().allowsDeletion() || index >= count() || !devicePlaylistAtIndex(index))
        return 0;
    return canEditEntityAtIndex(index) ? 1 : 0;
}

void ZRNPlaylistsDataSource::deleteEntityAtIndex(std::uint64_t index) {
    const auto self = strong(this);
    const auto playlist = devicePlaylistAtIndex(index);
    if (!playlist) return;
    playlist->library()->removePlaylist(*playlist);
    _invalidateCalculatedEntities();
}

bool ZRNPlaylistsDataSource::entityIsNowPlayingAtIndex(std::uint64_t index) {
    const auto player = ZRNSharedAVPlayer();
    const auto playing = player ? player->currentMediaQuery() : nullptr;
    const auto filter =
        playing ? playing->predicateForProperty(MediaPlaylistProperty::PersistentID) : std::nullopt;
    if (!filter || !filter->value()) return false;
    const auto playlist = playlistAtIndex(index);
    return playlist && filter->value() == Value(playlist->persistentID());
}

}  // namespace zornic
