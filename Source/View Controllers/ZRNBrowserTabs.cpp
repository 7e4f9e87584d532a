#include "View Controllers/ZRNBrowserTabs.h"

#include <algorithm>
#include <array>

#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"

namespace zornic {
namespace {

// The chosen albums image is drawn as it is, unlike every other; artists leave their screen untitled.
constexpr std::array tabs = {
    ZRNBrowserTab{ZRNRadioViewControllerIdentifier, "Radio", "HelmoRadioTab", "HelmoRadioTabOn", true, true},
    ZRNBrowserTab{ZRNBrivoMixesViewControllerIdentifier, "Brivo", "HelmoBrivoMixesTab",
                  "HelmoBrivoMixesTabOn", true, true},
    ZRNBrowserTab{ZRNPlaylistsViewControllerIdentifier, "Playlists", "HelmoPlaylistsTab",
                  "HelmoPlaylistsTabOn", true, true},
    ZRNBrowserTab{ZRNAlbumsViewControllerIdentifier, "Albums", "HelmoAlbumsTab", "HelmoAlbumsTabOn", false,
                  true},
    ZRNBrowserTab{ZRNArtistsViewControllerIdentifier, "Artists", "HelmoArtistsTab", nullptr, false, false},
    ZRNBrowserTab{ZRNSongsViewControllerIdentifier, "Songs", "HelmoSongsTab", nullptr, false, true},
    ZRNBrowserTab{ZRNAudiobooksViewControllerIdentifier, "Audiobooks", "HelmoAudiobooksTab",
                  "HelmoAudiobooksTabOn", true, true},
    ZRNBrowserTab{ZRNComposersViewControllerIdentifier, "Composers", "HelmoComposersTab",
                  "HelmoComposersTabOn", true, true},
    ZRNBrowserTab{ZRNCompilationsViewControllerIdentifier, "Compilations", "HelmoCompilationsTab", nullptr,
                  false, true},
    ZRNBrowserTab{ZRNGenresViewControllerIdentifier, "Genres", "HelmoGenresTab", nullptr, false, true},
};

Image templateImage(const char* name) {
    return ZRNHelmoImage(name).withRenderingMode(ImageRenderingMode::AlwaysTemplate);
}

Image originalImage(const char* name) {
    return ZRNHelmoImage(name).withRenderingMode(ImageRenderingMode::AlwaysOriginal);
}

}  // namespace

const ZRNBrowserTab* ZRNBrowserTabForIdentifier(const std::string& identifier) {
    const auto found =
        std::ranges::find(tabs, identifier, [](const auto& tab) { return std::string(tab.identifier); });
    return found == tabs.end() ? nullptr : &*found;
}

TabBarItem ZRNTabBarItem(const ZRNBrowserTab& tab) {
    TabBarItem item{ZRNLocalizedString(tab.titleKey), templateImage(tab.image), {}};
    if (tab.selectedImage)
        item.selectedImage =
            tab.selectedImageIsTemplate ? templateImage(tab.selectedImage) : originalImage(tab.selectedImage);
    return item;
}

TabBarItem ZRNMoreTabBarItem(const std::string& title) {
    return {title, originalImage("HelmoMoreTab"), originalImage("HelmoMoreTabOn")};
}

const std::vector<std::string>& ZRNDefaultTabIdentifiers() {
    static const std::vector<std::string> identifiers = {
        ZRNRadioViewControllerIdentifier,        ZRNPlaylistsViewControllerIdentifier,
        ZRNArtistsViewControllerIdentifier,      ZRNSongsViewControllerIdentifier,
        ZRNAlbumsViewControllerIdentifier,       ZRNGenresViewControllerIdentifier,
        ZRNCompilationsViewControllerIdentifier, ZRNComposersViewControllerIdentifier};
    return identifiers;
}

}  // namespace zornic
