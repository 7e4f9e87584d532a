#pragma once

#include <string>

#include "Platform/Media/MediaItem.h"

namespace zornic {

/** Texts of an item for the display; an empty one counts as missing and has a text instead. Main thread. */
std::string titleWithFallback(const MediaItem& item);
std::string albumTitleWithFallback(const MediaItem& item);
std::string artistWithFallback(const MediaItem& item);
/** The album artist, or else what stands for the artist. */
std::string albumArtistWithFallback(const MediaItem& item);

/** The item's picture at `size` points, or the placeholder for rows of one or two lines. */
Image albumImageWithFallbackForSizeDoubleLineRow(const MediaItem& item, Size size, bool doubleLineRow);

}  // namespace zornic
