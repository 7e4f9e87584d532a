#include "Platform/Foundation/PlatformText.h"

#include "Platform/Foundation/Bundle.h"

namespace zornic {

std::string platformText(std::string_view key, std::string_view fallback) {
    const auto bundle = Bundle::platformBundle();
    return bundle ? bundle->localizedString(key, fallback, "Platform") : std::string(fallback);
}

}  // namespace zornic
