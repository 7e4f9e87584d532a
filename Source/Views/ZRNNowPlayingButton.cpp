#include "Views/ZRNNowPlayingButton.h"

#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNViews.h"
#include "Views/ZRNButton.h"

namespace zornic {
namespace {

constexpr double titleFontSize = 14, titleInset = 12, arrowGap = 3.5, borderWidth = 0.5;
/** How far the button reaches beyond the view that stands for it in a bar, so that a finger finds it. */
constexpr double reachUp = 14, reachAcross = 17, reachDown = 18;
constexpr double titleDrop = 5, arrowDrop = 8;

}  // namespace

std::shared_ptr<ZRNNowPlayingButton> ZRNNowPlayingButton::buttonWithHeight(double) {
    const auto button = make<ZRNNowPlayingButton>(ButtonType::Custom);
    button->setTitle(ZRNLocalizedString("Now Playing tab"), ControlState::Normal);
    button->titleLabel()->setFont(Font::systemFont(titleFontSize));
    button->setTitleColor(_externalSystemTealColor(), ControlState::Normal);
    button->setTitleColor(_externalSystemBarBackgroundColor(), ControlState::Highlighted);
    button->setTintColor(_externalSystemTealColor());
    button->titleLabel()->setNumberOfLines(2);
    button->titleLabel()->setTextAlignment(TextAlignment::Right);
    button->setImage(
        ZRNHelmoImage("HelmoForwardButton").withRenderingMode(ImageRenderingMode::AlwaysTemplate),
        ControlState::Normal);
    button->sizeToFit();
    return button;
}

void ZRNNowPlayingButton::didMake() {
    Button::didMake();
    _leftBorder = make<Layer>();
    _leftBorder->setBackgroundColor(_externalSystemDarkGrayColor());
    layer()->addSublayer(_leftBorder);
}

void ZRNNowPlayingButton::setHidesLeftBorder(bool hides) {
    if (hides == _hidesLeftBorder) return;
    _hidesLeftBorder = hides;
    setNeedsLayout();
}

void ZRNNowPlayingButton::sizeToFit() {
    Button::sizeToFit();
    const Rect fit = frame().inset(-titleInset, 0);
    setFrame({fit.x(), fit.y(), fit.width() - arrowGap, fit.height()});
}

void ZRNNowPlayingButton::layoutSubviews() {
    Button::layoutSubviews();
    const Rect title = titleLabel()->frame(), image = imageView()->frame();
    titleLabel()->setFrame({{image.x(), title.y()}, title.size});
    imageView()->setFrame({{titleLabel()->frame().maxX() + arrowGap, image.y()}, image.size});
    updateLeftBorder();
    updateColors();
    if (_focusColorLayer) _focusColorLayer->setFrame(bounds());
}

void ZRNNowPlayingButton::updateLeftBorder() {
    if (_hidesLeftBorder) {
        _leftBorder->removeFromSuperlayer();
        return;
    }
    if (!_leftBorder->superlayer()) layer()->addSublayer(_leftBorder);
    _leftBorder->setFrame(
        {bounds().origin, {roundedToScale(borderWidth, displayScale()), bounds().height()}});
}

void ZRNNowPlayingButton::updateColors() {
    const auto normal = titleColorForState(ControlState::Normal);
    const auto highlighted = titleColorForState(ControlState::Highlighted);
    setBackgroundColor(isHighlighted() ? normal : highlighted);
    imageView()->setTintColor(isHighlighted() ? highlighted : normal);
}

void ZRNNowPlayingButton::focusDidChange() {
    const bool focused = isFocused() && canBecomeFocused();
    if (focused) {
        if (!_focusColorLayer) _focusColorLayer = make<Layer>();
        layer()->addSublayer(_focusColorLayer);
        _focusColorLayer->setBackgroundColor(tintColor());
        _focusColorLayer->setFrame(bounds());
    } else if (_focusColorLayer) {
        _focusColorLayer->removeFromSuperlayer();
    }
    const auto mode = focused ? CompositingMode::DestinationOut : CompositingMode::SourceOver;
    ZRNCompositeButtonContent(*this, mode, mode);
}

std::shared_ptr<View> ZRNViewForNowPlayingButton(double height, const std::shared_ptr<Object>& target,
                                                 Control::Action action, bool hidesLeftBorder) {
    const auto button = ZRNNowPlayingButton::buttonWithHeight(height);
    button->setHidesLeftBorder(hidesLeftBorder);
    button->addTarget(target, std::move(action), ControlEvent::TouchUpInside);
    const Rect bounds = button->bounds();
    const auto container = make<View>(ZRNCGRectZeroOrigin(bounds));
    container->addSubview(button);
    button->setFrame(
        {bounds.x(), bounds.y() - reachUp, bounds.width() + reachAcross, bounds.height() + reachDown});
    button->setTitleEdgeInsets({titleDrop, 0, 0, 0});
    button->setImageEdgeInsets({arrowDrop, 0, 0, 0});
    button->layoutIfNeeded();
    return container;
}

}  // namespace zornic
