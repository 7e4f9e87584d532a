#include "Views/ZRNButton.h"

#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNStrings.h"

namespace zornic {
namespace {

constexpr double bezelRadius = 4;

}  // namespace

std::shared_ptr<ZRNButton> ZRNButton::buttonWithType(ButtonType type) { return make<ZRNButton>(type); }

void ZRNButton::setLabelTemplateString(const std::string& labelTemplate) {
    if (labelTemplate == _labelTemplateString) return;
    _labelTemplateString = labelTemplate;
    setTitle(ZRNPlainTextOfTemplate(labelTemplate), ControlState::Normal);
}

void ZRNButton::setShowBezelInTouch(bool show) {
    _showBezelInTouch = show;
    setNeedsLayout();
}

void ZRNButton::setSelected(bool selected) {
    Button::setSelected(selected);
    setNeedsLayout();
}

void ZRNButton::focusDidChange() { setNeedsLayout(); }

void ZRNButton::didMoveToWindow() {
    Button::didMoveToWindow();
    setNeedsLayout();
}

void ZRNButton::layoutSubviews() {
    Button::layoutSubviews();
    const bool knob = ZRNHelmoUIMode() == ZRNHelmoUIModeKnob;
    const bool focused = knob && isFocused();
    updateFocusColorLayer(knob, focused);
    imageView()->setTintColor(isSelected() ? tintColor() : Color::whiteColor());
    setTitleColor(tintColor(), ControlState::Normal);
    const auto cutOutIf = [](bool cut) {
        return cut ? CompositingMode::DestinationOut : CompositingMode::SourceOver;
    };
    ZRNCompositeButtonContent(*this, cutOutIf(focused), cutOutIf(focused && isSelected()));
}

void ZRNButton::updateFocusColorLayer(bool knob, bool focused) {
    if (!knob && !_showBezelInTouch) {
        if (_focusColorLayer) _focusColorLayer->removeFromSuperlayer();
        return;
    }
    if (!_focusColorLayer) {
        _focusColorLayer = make<Layer>();
        _focusColorLayer->setCornerRadius(bezelRadius);
    }
    if (!_focusColorLayer->superlayer()) layer()->insertSublayer(_focusColorLayer, 0);
    _focusColorLayer->setFrame(bounds());
    const Color rest = knob ? _externalSystemSuperDarkGrayColor() : _externalSystemDarkGrayColor();
    _focusColorLayer->setBackgroundColor(focused ? tintColor() : rest);
}

void ZRNCompositeButtonContent(const Button& button, CompositingMode title, CompositingMode image) {
    const auto& titleLayer = button.titleLabel()->layer();
    const auto& imageLayer = button.imageView()->layer();
    titleLayer->setCompositingMode(title);
    imageLayer->setCompositingMode(image);
    const auto& layers = button.layer()->sublayers();
    const auto count = layers.size();
    // Moving a layer draws it anew, so it is done only where something came to lie above.
    if (count >= 2 && layers[count - 2] == titleLayer && layers[count - 1] == imageLayer) return;
    button.layer()->addSublayer(titleLayer);
    button.layer()->addSublayer(imageLayer);
}

}  // namespace zornic
