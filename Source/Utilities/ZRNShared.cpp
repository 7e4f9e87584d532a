#include "Utilities/ZRNShared.h"

namespace zornic {
namespace {

std::shared_ptr<ApplicationDefaults>& sharedDefaults() {
    static std::shared_ptr<ApplicationDefaults> defaults;
    return defaults;
}

std::shared_ptr<AVController>& sharedPlayer() {
    static std::shared_ptr<AVController> player;
    return player;
}

}  // namespace

std::shared_ptr<ApplicationDefaults> ZRNSharedDefaults() { return sharedDefaults(); }

void ZRNSetSharedDefaults(std::shared_ptr<ApplicationDefaults> defaults) { sharedDefaults().swap(defaults); }

bool ZRNGroupsByAlbumArtist() {
    const auto defaults = ZRNSharedDefaults();
    return defaults && defaults->isGroupByAlbumArtistEnabled();
}

std::shared_ptr<AVController> ZRNSharedAVPlayer() { return sharedPlayer(); }

void ZRNSetSharedAVPlayer(std::shared_ptr<AVController> player) { sharedPlayer().swap(player); }

}  // namespace zornic
