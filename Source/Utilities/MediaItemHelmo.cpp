#include "Utilities/MediaItemHelmo.h"

#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNHelmoScreen.h"

namespace zornic {
namespace {

std::string orText(std::string text, const char* key) {
    return text.empty() ? ZRNLocalizedString(key) : text;
}

}  // namespace

std::string titleWithFallback(const MediaItem& item) { return orText(item.title(), "Unknown Title"); }

std::string albumTitleWithFallback(const MediaItem& item) {
    return orText(item.albumTitle(), "Unknown Album");
}

std::string artistWithFallback(const MediaItem& item) { return orText(item.artist(), "Unknown Artist"); }

std::string albumArtistWithFallback(const MediaItem& item) {
    const std::string albumArtist = item.albumArtist();
    return albumArtist.empty() ? artistWithFallback(item) : albumArtist;
}

Image albumImageWithFallbackForSizeDoubleLineRow(const MediaItem& item, Size size, bool doubleLineRow) {
    const Image image = item.artworkImageWithSize(size);
    return image ? image : ZRNAlbumPlaceholderImageWithStyle(doubleLineRow ? 1 : 0);
}

}  // namespace zornic
