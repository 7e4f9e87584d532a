#include "Host/HostTabBarController.h"

#include "View Controllers/ZRNBrowserViewController.h"

namespace helmo {

std::optional<std::vector<std::string>> HostTabBarController::textsForKey(const std::string& key) const {
    if (key != "visibleViewControllerIdentifiers") return std::nullopt;
    return _settings.values().tabs;
}

void HostTabBarController::postOrderDidChange() {
    zornic::NotificationCenter::defaultCenter().post(
        zornic::MusicTabBarControllerDidChangeOrderedViewControllerIdentifiersNotification,
        shared_from_this());
}

}  // namespace helmo
