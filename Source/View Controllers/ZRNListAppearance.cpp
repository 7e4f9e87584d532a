#include "View Controllers/ZRNListAppearance.h"

#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/ZRNTableViews.h"
#include "Views/ZRNNowPlayingButton.h"

namespace zornic {

void ZRNUpdateNavigationBarForList(ViewController& list, bool alwaysShown) {
    auto* navigation = list.navigationController();
    if (!navigation) return;
    const bool hidden = !alwaysShown && navigation->viewControllers().size() < 2;
    navigation->setNavigationBarHidden(hidden, true);
}

std::shared_ptr<View> ZRNInstallNowPlayingButton(ViewController& list, Control::Action action) {
    auto* navigation = list.navigationController();
    const double height = navigation ? navigation->navigationBar()->bounds().height() : 0;
    const auto button = ZRNViewForNowPlayingButton(height, strong<Object>(&list), std::move(action), true);
    list.navigationItem()->setRightBarButtonItem(make<BarButtonItem>(button));
    return button;
}

void ZRNClearSelectionOnAppearance(ViewController& list, const std::shared_ptr<TableView>& table,
                                   bool animated, const Task& willWait) {
    const auto coordinator = list.transitionCoordinator();
    if (coordinator && coordinator->initiallyInteractive()) {
        coordinator->notifyWhenInteractionEnds(
            [weakTable = std::weak_ptr(table), animated](const auto& context) {
                if (context.cancelled) return;
                if (const auto living = weakTable.lock()) ZRNClearTableViewSelection(*living, animated);
            });
        if (willWait) willWait();
    }
    ZRNClearTableViewSelection(*table, animated);
}

}  // namespace zornic
