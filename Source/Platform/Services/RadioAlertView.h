#pragma once

#include <memory>
#include <string>

#include "Platform/Foundation/Object.h"

namespace zornic {

/** Posted by any sender, on the main thread, when the driver opted in to radio or out of it. */
inline constexpr const char* RadioOptInDidChangeNotification = "RadioOptInDidChangeNotification";

/** An alert of the radio service, shown elsewhere than on the car's display. The service implements it. Main
 * thread. */
class RadioAlertView : public Object {
public:
    virtual std::string title() const = 0;
    virtual std::string message() const = 0;
    /** Takes it away as if the button at `buttonIndex` was pressed, -1: none. The delegate hears of it. */
    virtual void dismiss(int buttonIndex, bool animated) = 0;
};

/** Follows the radio service's alerts. */
class RadioAlertViewDelegate {
public:
    virtual ~RadioAlertViewDelegate() = default;
    virtual void willPresentAlertView(const std::shared_ptr<RadioAlertView>& alertView) = 0;
    virtual void didDismissAlertView(const std::shared_ptr<RadioAlertView>& alertView) = 0;
};

}  // namespace zornic
