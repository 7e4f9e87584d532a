#include "Host/Resources.h"

#include "Utilities/ZRNGenreImage.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace helmo {

std::optional<std::filesystem::path> findResources(const std::optional<std::filesystem::path>& wanted) {
    const auto hasTexts = [](const std::filesystem::path& folder) {
        std::error_code error;
        return std::filesystem::exists(folder / "en" / "ZornicUI.strings", error);
    };
    if (wanted) return hasTexts(*wanted) ? wanted : std::nullopt;
    for (const std::filesystem::path folder : {HELMO_SOURCE_RESOURCES, HELMO_INSTALLED_RESOURCES})
        if (hasTexts(folder)) return folder;
    return std::nullopt;
}

void registerResources(const std::filesystem::path& folder) {
    using zornic::Bundle;
    for (const char* identifier : {zornic::ZRNHelmoBundleIdentifier, Bundle::platformIdentifier})
        Bundle::registerBundle(zornic::make<Bundle>(identifier, folder));
    Bundle::registerBundle(zornic::make<Bundle>(zornic::ZRNHostMusicBundleIdentifier, folder / "host-music"));
}

}  // namespace helmo
