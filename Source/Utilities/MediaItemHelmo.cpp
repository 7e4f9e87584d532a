#include "Utilities/MediaItemHelmo.h"

#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNHelmoScreen.h"

namespace zornic {

std::string titleWithFallback(const MediaItem& item) {
    return ZRNTextOrLocalizedString(item.title(), "Unknown Title");
}

std::string albumTitleWithFallback(const MediaItem& item) {
    return ZRNTextOrLocalizedString(item.albumTitle(), "Unknown Album");
}

std::string artistWithFallback(const MediaItem& item) {
    return ZRNTextOrLocalizedString(item.artist(), "Unknown Artist");
}

std::string albumArtistWithFallback(const MediaItem& item) {
    const std::string albumArtist = item.albumArtist();
    return albumArtist.empty() ? artistWithFallback(item) : albumArtist;
}

Image albumImageWithFallbackForSizeDoubleLineRow(const MediaItem& item, Size size, bool doubleLineRow) {
    const Image image = item.artworkImageWithSize(size);
    return image ? image : ZRNAlbumPlaceholderImageWithStyle(doubleLineRow ? 1 : 0);
}

}  // namespace zornic
