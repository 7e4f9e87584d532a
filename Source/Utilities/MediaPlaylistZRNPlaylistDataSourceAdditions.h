#pragma once

#include "Platform/Foundation/LocaleServices.h"
#include "Platform/Media/MediaPlaylist.h"

namespace zornic {

/** Order of two playlists by name, whatever the case of its letters. Any thread. */
Ordering ZRN_sortPlaylistByName(const MediaPlaylist& playlist, const MediaPlaylist& other);

}  // namespace zornic
