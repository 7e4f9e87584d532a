#include "Platform/Toolkit/Screen.h"

namespace zornic {

namespace {

std::shared_ptr<Screen>& presentCarScreen() {
    static std::shared_ptr<Screen> screen;
    return screen;
}

}  // namespace

std::shared_ptr<Screen> Screen::carScreen() { return presentCarScreen(); }
void Screen::setCarScreen(std::shared_ptr<Screen> screen) { presentCarScreen() = std::move(screen); }

void Screen::setSize(Size size, double scale) {
    _size = size;
    _scale = scale;
}

std::int64_t Screen::integerCapability(ScreenCapability capability) const {
    return capability == ScreenCapability::InteractionModels ? _interactionModels : _touchLevels;
}

void Screen::setIntegerCapability(ScreenCapability capability, std::int64_t value) {
    (capability == ScreenCapability::InteractionModels ? _interactionModels : _touchLevels) = value;
}

}  // namespace zornic
