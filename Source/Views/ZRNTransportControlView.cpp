#include "Views/ZRNTransportControlView.h"

#include <cmath>

#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNViews.h"

namespace zornic {
namespace {

constexpr std::int32_t frozenMode = 2;
constexpr double highTouchCenterY = 35, highTouchReach = 73.5;
constexpr double tileMarginX = 12, tileMarginY = 10;
constexpr float tileSpacing = 10;

Image templateOf(const Image& image) { return image.withRenderingMode(ImageRenderingMode::AlwaysTemplate); }

}  // namespace

void ZRNTransportControlView::didMake() {
    View::didMake();
    _playPauseButton = ZRNButton::buttonWithType(ButtonType::Custom);
    _leftButton = ZRNButton::buttonWithType(ButtonType::Custom);
    _leftButton->setImage(templateOf(defaultLeftButtonImage()), ControlState::Normal);
    _fastForwardButton = ZRNButton::buttonWithType(ButtonType::Custom);
    _fastForwardButton->setImage(templateOf(defaultFastForwardButtonImage()), ControlState::Normal);
    for (const auto& button : {_playPauseButton, _leftButton, _fastForwardButton}) addSubview(button);
    setPauseImage(ZRNHelmoImage("HelmoPauseButton"));
}

Image ZRNTransportControlView::defaultLeftButtonImage() const { return ZRNHelmoImage("HelmoRewindButton"); }

Image ZRNTransportControlView::defaultFastForwardButtonImage() const {
    return ZRNHelmoImage("HelmoFastForwardButton");
}

void ZRNTransportControlView::setProgressActive(bool active) {
    _progressActive = active;
    _updateProgressActive();
}

void ZRNTransportControlView::setMode(std::int32_t mode) {
    _mode = mode;
    setNeedsLayout();
}

void ZRNTransportControlView::setPauseImage(const Image& image) {
    if (image == _pauseImage) return;
    _pauseImage = image;
    _updateProgressActive();
}

void ZRNTransportControlView::_updateProgressActive() {
    const Image image = _progressActive ? _pauseImage : ZRNHelmoImage("HelmoPlayButton");
    _playPauseButton->setImage(templateOf(image), ControlState::Normal);
    setNeedsLayout();
}

void ZRNTransportControlView::layoutSubviews() {
    View::layoutSubviews();
    if (ZRNHelmoUIMode() == ZRNHelmoUIModeHiTouch)
        layoutHighTouch();
    else
        layoutLowTouch();
}

void ZRNTransportControlView::layoutHighTouch() {
    if (_mode == frozenMode) return;
    const double center = std::floor(bounds().width() * 0.5);
    const auto place = [](const std::shared_ptr<ZRNButton>& button, auto leftEdge) {
        const Size size = button->imageForState(ControlState::Normal).size();
        button->setFrame({{leftEdge(size.width), std::floor(highTouchCenterY - size.height * 0.5)}, size});
    };
    place(_playPauseButton, [center](double width) { return center - std::floor(width * 0.5); });
    place(_leftButton, [center](double width) { return center - highTouchReach - width; });
    place(_fastForwardButton, [center](double) { return center + highTouchReach; });
}

void ZRNTransportControlView::layoutLowTouch() {
    ZRNTileViewsHorizontally({_leftButton, _playPauseButton, _fastForwardButton},
                             bounds().inset(tileMarginX, tileMarginY), tileSpacing);
}

}  // namespace zornic
