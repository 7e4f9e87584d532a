#include "Platform/Media/AVItem.h"

#include "Platform/Foundation/PlatformText.h"
#include "Platform/Foundation/StringFormat.h"

namespace zornic {

bool AVLibraryItem::isExplicitTrack() const { return _mediaItem->isExplicit(); }

std::shared_ptr<ArtworkCatalog> AVLibraryItem::artworkCatalogForTime(Seconds) const {
    return _mediaItem->artworkCatalog();
}

std::string AVLibraryItem::localizedPositionInPlaylistString() const {
    if (_position >= _count) return {};
    return formatted(platformText("TRACK_POSITION_FORMAT", "%1$lu of %2$lu"), {_position + 1, _count});
}

std::string AVLibraryItem::mainTitle() const { return _mediaItem->title(); }

std::string AVLibraryItem::artist() const { return _mediaItem->artist(); }

std::string AVLibraryItem::albumTitle() const { return _mediaItem->albumTitle(); }

std::string AVLibraryItem::location() const {
    return _mediaItem->valueForProperty(MediaItemProperty::Location).asText();
}

Seconds AVLibraryItem::knownDuration() const { return Seconds(_mediaItem->playbackDuration()); }

Seconds AVLibraryItem::startTime() const {
    if (!_mediaItem->valueForProperty(MediaItemProperty::RememberBookmarkTime).asBool()) return Seconds(0);
    const Seconds bookmark(_mediaItem->bookmarkTime().value_or(0));
    // A bookmark at the very end belongs to a piece that was heard out: it begins anew.
    const auto duration = knownDuration();
    const bool isInside =
        bookmark > Seconds(0) && (duration <= Seconds(0) || bookmark < duration - Seconds(1));
    return isInside ? bookmark : Seconds(0);
}

bool AVLibraryItem::isEqual(const AVItem& other) const {
    const auto* item = dynamic_cast<const AVLibraryItem*>(&other);
    return item && _mediaItem->isEqual(*item->_mediaItem);
}

}  // namespace zornic
