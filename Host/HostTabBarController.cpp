#include "Host/HostTabBarController.h"

#include "View Controllers/ZRNBrowserViewController.h"

namespace helmo {

std::optional<std::vector<std::string>> HostTabBarController::textsForKey(const std::string& key) const {
    if (key != "visibleViewControllerIdentifiers") return std::nullopt;
    const SettingsValues& values = _settings.values();
    if (values.brivo) return values.tabs;
    auto tabs = values.tabs;
    std::erase(tabs, "brivomix");
    // A display without any tab would be of no use.
    if (tabs.empty()) std::erase(tabs = SettingsValues().tabs, "brivomix");
    return tabs;
}

void HostTabBarController::postOrderDidChange() {
    zornic::NotificationCenter::defaultCenter().post(
        zornic::MusicTabBarControllerDidChangeOrderedViewControllerIdentifiersNotification,
        shared_from_this());
}

}  // namespace helmo
