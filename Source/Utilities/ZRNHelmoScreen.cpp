#include "Utilities/ZRNHelmoScreen.h"

#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {

std::shared_ptr<Screen> ZRNHelmoScreen() { return Screen::carScreen(); }

ZRNHelmoUIModeValue ZRNHelmoUIMode() {
    const auto screen = ZRNHelmoScreen();
    if (!screen) return ZRNHelmoUIModeHiTouch;
    const std::int64_t models = screen->integerCapability(ScreenCapability::InteractionModels);
    if (models & InteractionModel::Knob) return ZRNHelmoUIModeKnob;
    if ((models & InteractionModel::Touch) && screen->integerCapability(ScreenCapability::TouchLevels) != 0)
        return ZRNHelmoUIModeLowTouch;
    return ZRNHelmoUIModeHiTouch;
}

Image ZRNHelmoImage(const std::string& name) {
    const auto screen = ZRNHelmoScreen();
    return Image::named(name, ZRNHelmoBundle(), screen ? screen->traits() : DisplayTraits());
}

Image ZRNAlbumPlaceholderImageWithStyle(std::int64_t style) {
    if (style == 0) return ZRNHelmoImage("HelmoAlbumProxyArtSingle");
    if (style == 1) return ZRNHelmoImage("HelmoAlbumProxyArtDouble");
    return {};
}

}  // namespace zornic
