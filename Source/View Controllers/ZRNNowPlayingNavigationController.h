#pragma once

#include "Platform/Toolkit/NavigationController.h"

namespace zornic {

/** What a Now Playing screen is presented in. An empty screen lies below it, so that its bar has a back
   button, which closes the whole presentation. Main thread. */
class ZRNNowPlayingNavigationController : public NavigationController {
public:
    /** `root` is the Now Playing screen. */
    explicit ZRNNowPlayingNavigationController(std::shared_ptr<ViewController> root);
    void didMake() override;

    /** The empty screen, which is never seen. */
    const std::shared_ptr<ViewController>& previousViewController() const { return _fakeViewController; }
    /** Never pops; whoever presents this dismisses it. */
    bool navigationBarShouldPopItem(NavigationBar& bar, const std::shared_ptr<NavigationItem>& item) override;

private:
    ZRNNowPlayingNavigationController(std::shared_ptr<ViewController> fake,
                                      std::shared_ptr<ViewController> root);

    const std::shared_ptr<ViewController> _fakeViewController;
    std::shared_ptr<ViewController> _shownController;
};

}  // namespace zornic
