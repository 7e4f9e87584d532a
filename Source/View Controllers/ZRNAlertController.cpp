#include "View Controllers/ZRNAlertController.h"

#include "Utilities/ZRNViews.h"
#include "Views/ZRNButton.h"

namespace zornic {
namespace {

constexpr float behindAlert = 0, afterAlert = -0.9F;

}  // namespace

void ZRNAlertController::viewDidAppear(bool animated) {
    // The base is told of its coming once more, and of its having come not at all.
    AlertController::viewWillAppear(animated);
    const auto presenter = presentingViewController();
    _presentingViewControllerView = presenter ? presenter->view() : nullptr;
    ZRNSetChargeOnDescendantsOfView<ZRNButton>(_presentingViewControllerView, behindAlert);
}

void ZRNAlertController::viewDidDisappear(bool animated) {
    AlertController::viewDidDisappear(animated);
    ZRNSetChargeOnDescendantsOfView<ZRNButton>(_presentingViewControllerView, afterAlert);
    _presentingViewControllerView = nullptr;
}

}  // namespace zornic
