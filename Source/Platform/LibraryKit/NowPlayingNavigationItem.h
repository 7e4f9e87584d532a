#pragma once

#include <functional>
#include <memory>

#include "Platform/Media/AVController.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

/** The kit's own way to Now Playing in a screen's bar: a right item that is there while `player` has
   something to play and presents what `makeScreen` makes. Lasts until it is ended or the screen goes. Main
   thread. */
void beginShowingNowPlayingNavigationItem(const std::shared_ptr<ViewController>& screen,
                                          const std::shared_ptr<AVController>& player,
                                          std::function<std::shared_ptr<ViewController>()> makeScreen);
void endShowingNowPlayingNavigationItem(const std::shared_ptr<ViewController>& screen);

}  // namespace zornic
