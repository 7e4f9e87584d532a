#include "Utilities/MediaPlaylistZRNPlaylistDataSourceAdditions.h"

namespace zornic {

Ordering ZRN_sortPlaylistByName(const MediaPlaylist& playlist, const MediaPlaylist& other) {
    return LocaleServices::current().caseInsensitiveCompare(playlist.name(), other.name());
}

}  // namespace zornic
