#include "Data Sources/ZRNArtistsDataSource.h"

#include "Platform/Media/MediaItem.h"
#include "Utilities/ZRNShared.h"

namespace zornic {

bool ZRNArtistsDataSource::entityIsNowPlayingAtIndex(std::uint64_t index) {
    const auto player = ZRNSharedAVPlayer();
    const auto playing = player ? player->currentMediaItem() : nullptr;
    if (!playing) return false;
    const auto artist = entityAtIndex(index);
    const auto item = artist ? artist->representativeItem() : nullptr;
    if (!item) return false;
    const Value artistOfRow = item->valueForProperty(MediaItemProperty::ArtistPersistentID);
    return artistOfRow && artistOfRow == playing->valueForProperty(MediaItemProperty::ArtistPersistentID);
}

}  // namespace zornic
