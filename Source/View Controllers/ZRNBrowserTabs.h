#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Toolkit/TabBarItem.h"

namespace zornic {

/** How one category shows as a tab. */
struct ZRNBrowserTab {
    const char* identifier;
    const char* titleKey;
    const char* image;
    /** None: the category has no image of its own for the chosen state. */
    const char* selectedImage;
    bool selectedImageIsTemplate;
    /** Whether the screen itself bears the title too. */
    bool titlesScreen;
};

/** The tab of a category by the display's identifier; none for an identifier that has none. */
const ZRNBrowserTab* ZRNBrowserTabForIdentifier(const std::string& identifier);
TabBarItem ZRNTabBarItem(const ZRNBrowserTab& tab);
/** The item of the tab behind which the rest is listed. */
TabBarItem ZRNMoreTabBarItem(const std::string& title);
/** The tabs, in order, of a display whose host has no tabs of its own. */
const std::vector<std::string>& ZRNDefaultTabIdentifiers();

}  // namespace zornic
