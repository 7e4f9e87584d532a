#include "View Controllers/ZRNNowPlayingNavigationController.h"

namespace zornic {

ZRNNowPlayingNavigationController::ZRNNowPlayingNavigationController(std::shared_ptr<ViewController> root)
    : ZRNNowPlayingNavigationController(make<ViewController>(), std::move(root)) {}

ZRNNowPlayingNavigationController::ZRNNowPlayingNavigationController(std::shared_ptr<ViewController> fake,
                                                                     std::shared_ptr<ViewController> root)
    : NavigationController(fake), _fakeViewController(std::move(fake)), _shownController(std::move(root)) {}

void ZRNNowPlayingNavigationController::didMake() {
    NavigationController::didMake();
    pushViewController(std::exchange(_shownController, nullptr), false);
}

bool ZRNNowPlayingNavigationController::navigationBarShouldPopItem(NavigationBar&,
                                                                   const std::shared_ptr<NavigationItem>&) {
    if (const auto presenter = presentingViewController())
        presenter->dismissViewControllerWithTransition(PresentationTransition::Fall);
    return false;
}

}  // namespace zornic
