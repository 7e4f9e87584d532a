#pragma once

#include <memory>

#include "Platform/Toolkit/ViewController.h"

namespace zornic {

/** Shows, or ends showing, the kit's own way to Now Playing in a screen's bar, for the shared player. Main
 * thread. */
void ZRN_setShowsNowPlayingNavigationItem(const std::shared_ptr<ViewController>& screen, bool shows);

}  // namespace zornic
