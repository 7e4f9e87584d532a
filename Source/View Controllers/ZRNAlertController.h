#pragma once

#include "Platform/Toolkit/AlertController.h"

namespace zornic {

/** An alert that takes the charge off the buttons of the screen behind it while it is up. Main thread. */
class ZRNAlertController : public AlertController {
public:
    using AlertController::AlertController;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;

private:
    /** Kept while the alert is on view: by the time that it has gone, nobody presents it any more. */
    std::shared_ptr<View> _presentingViewControllerView;
};

}  // namespace zornic
