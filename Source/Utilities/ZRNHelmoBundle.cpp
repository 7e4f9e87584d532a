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

std::string ZRNTextOrLocalizedString(std::string text, const char* key) {
    return text.empty() ? ZRNLocalizedString(key) : text;
}

}  // namespace zornic
