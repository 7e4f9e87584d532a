#pragma once

#include <memory>

#include "Platform/LibraryKit/ApplicationDefaults.h"
#include "Platform/Media/AVController.h"

namespace zornic {

/** The host's settings, set by the host; none before. Kept until replaced. Main thread, as all of these. */
std::shared_ptr<ApplicationDefaults> ZRNSharedDefaults();
void ZRNSetSharedDefaults(std::shared_ptr<ApplicationDefaults> defaults);
/** What the settings say of artists at this moment; false without settings. */
bool ZRNGroupsByAlbumArtist();

/** The player of the present car display, set by its root controller; none before. Kept until replaced. */
std::shared_ptr<AVController> ZRNSharedAVPlayer();
void ZRNSetSharedAVPlayer(std::shared_ptr<AVController> player);

}  // namespace zornic
