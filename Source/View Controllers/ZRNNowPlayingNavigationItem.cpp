#include "View Controllers/ZRNNowPlayingNavigationItem.h"

#include "Platform/LibraryKit/NowPlayingNavigationItem.h"
#include "Utilities/ZRNShared.h"
#include "View Controllers/ZRNMusicNowPlayingViewController.h"
#include "View Controllers/ZRNNowPlayingNavigationController.h"

namespace zornic {

void ZRN_setShowsNowPlayingNavigationItem(const std::shared_ptr<ViewController>& screen, bool shows) {
    if (!shows) return endShowingNowPlayingNavigationItem(screen);
    const auto player = ZRNSharedAVPlayer();
    beginShowingNowPlayingNavigationItem(screen, player, [player]() -> std::shared_ptr<ViewController> {
        return ZRNMusicNowPlayingViewController::withPlayer(player, nullptr, false)
            ->newPresentationNavigationController();
    });
}

}  // namespace zornic
