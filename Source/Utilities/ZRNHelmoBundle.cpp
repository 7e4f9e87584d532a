#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {

std::shared_ptr<Bundle> ZRNHelmoBundle() {
    static const std::shared_ptr<Bundle> bundle = Bundle::bundleWithIdentifier(ZRNHelmoBundleIdentifier);
    return bundle;
}

std::string ZRNLocalizedString(const std::string& key) {
    const auto bundle = ZRNHelmoBundle();
    return bundle ? bundle->localizedString(key, "", "ZornicUI") : std::string();
}

}  // namespace zornic
