#include "Platform/Toolkit/Button.h"

#include <algorithm>

namespace zornic {

namespace {

constexpr double disabledAlpha = 0.4, pressedAlpha = 0.6, focusRadius = 4;

/** The ground that shows where something is cut out of `view`. */
Color groundBehind(const View& view) {
    for (const View* below = &view; below; below = below->superview())
        if (const auto color = below->backgroundColor(); color && color->alpha > 0) return *color;
    return _externalSystemExtraDarkGrayColor();
}

}  // namespace

Button::Button(ButtonType type) : _type(type), _titleLabel(make<Label>()), _imageView(make<ImageView>()) {}

void Button::didMake() {
    Control::didMake();
    _imageView->setContentMode(ContentMode::AspectFit);
    addSubview(_imageView);
    addSubview(_titleLabel);
    contentChanged();
}

// Contents by state

std::string Button::titleForState(ControlState state) const {
    for (const ControlState s : {state, ControlState::Normal})
        if (const auto at = _contents.find(s); at != _contents.end() && at->second.title)
            return *at->second.title;
    return {};
}

std::optional<Color> Button::titleColorForState(ControlState state) const {
    for (const ControlState s : {state, ControlState::Normal})
        if (const auto at = _contents.find(s); at != _contents.end() && at->second.titleColor)
            return at->second.titleColor;
    return std::nullopt;
}

Image Button::imageForState(ControlState state) const {
    for (const ControlState s : {state, ControlState::Normal})
        if (const auto at = _contents.find(s); at != _contents.end() && at->second.image)
            return at->second.image;
    return {};
}

Image Button::backgroundImageForState(ControlState state) const {
    for (const ControlState s : {state, ControlState::Normal})
        if (const auto at = _contents.find(s); at != _contents.end() && at->second.backgroundImage)
            return at->second.backgroundImage;
    return {};
}

void Button::setTitle(const std::string& title, ControlState state) {
    auto& own = _contents[state].title;
    if (own == title) return;
    own = title;
    contentChanged();
}

void Button::setTitleColor(Color color, ControlState state) {
    auto& own = _contents[state].titleColor;
    if (own == color) return;
    own = color;
    contentChanged();
}

void Button::setImage(const Image& image, ControlState state) {
    auto& own = _contents[state].image;
    if (own == image) return;
    own = image;
    contentChanged();
}

void Button::setBackgroundImage(const Image& image, ControlState state) {
    auto& own = _contents[state].backgroundImage;
    if (own == image) return;
    own = image;
    contentChanged();
}

ControlState Button::currentState() const {
    if (!isEnabled()) return ControlState::Disabled;
    if (isHighlighted()) return ControlState::Highlighted;
    return isSelected() ? ControlState::Selected : ControlState::Normal;
}

bool Button::hasOwnLook(ControlState state) const {
    const auto at = _contents.find(state);
    return at != _contents.end() && (at->second.titleColor || at->second.image || at->second.backgroundImage);
}

/** Brings title and image in line with the state. */
void Button::contentChanged() {
    const ControlState state = currentState();
    const Color plain = _type == ButtonType::System ? tintColor() : labelDefaultColor();
    _titleLabel->setText(titleForState(state));
    _titleLabel->setTextColor(titleColorForState(state).value_or(plain));
    _titleLabel->setHidden(_titleLabel->text().empty());
    _imageView->setImage(imageForState(state));
    _imageView->setHidden(!_imageView->image());

    double alpha = 1;
    if (!hasOwnLook(state)) {
        if (state == ControlState::Disabled) alpha = disabledAlpha;
        if (state == ControlState::Highlighted) alpha = pressedAlpha;
    }
    _titleLabel->setAlpha(alpha);
    _imageView->setAlpha(alpha);
    setNeedsDisplay();
    setNeedsLayout();
}

void Button::setEnabled(bool enabled) {
    if (enabled == isEnabled()) return;
    Control::setEnabled(enabled);
    contentChanged();
}

void Button::setSelected(bool selected) {
    if (selected == isSelected()) return;
    Control::setSelected(selected);
    contentChanged();
}

void Button::setHighlighted(bool highlighted) {
    if (highlighted == isHighlighted()) return;
    Control::setHighlighted(highlighted);
    contentChanged();
}

void Button::tintColorDidChange() {
    Control::tintColorDidChange();
    contentChanged();
}

// Layout

void Button::setContentEdgeInsets(const EdgeInsets& insets) {
    _contentInsets = insets;
    setNeedsLayout();
}

void Button::setTitleEdgeInsets(const EdgeInsets& insets) {
    _titleInsets = insets;
    setNeedsLayout();
}

void Button::setImageEdgeInsets(const EdgeInsets& insets) {
    _imageInsets = insets;
    setNeedsLayout();
}

Size Button::titleSize(double room) const {
    if (_titleLabel->text().empty()) return {};
    const Size size = _titleLabel->sizeThatFits({room, 0});
    return {room > 0 ? std::min(size.width, room) : size.width, size.height};
}

Size Button::sizeThatFits(Size size) {
    const Size image = imageForState(currentState()).size();
    const double across = _contentInsets.left + _contentInsets.right;
    // A title in one line says how wide it is; one that may wrap takes the width that there is.
    const bool wraps = _titleLabel->numberOfLines() != 1;
    const Size title = titleSize(wraps ? std::max(0.0, size.width - across - image.width) : 0);
    return {image.width + title.width + across,
            std::max(image.height, title.height) + _contentInsets.top + _contentInsets.bottom};
}

void Button::layoutSubviews() {
    Control::layoutSubviews();
    const double scale = displayScale();
    const Rect area = bounds().inset(_contentInsets);
    const Rect imageArea = area.inset(_imageInsets), titleArea = area.inset(_titleInsets);
    const Size natural = _imageView->image().size();
    const Size image{std::min(natural.width, std::max(0.0, imageArea.width())),
                     std::min(natural.height, std::max(0.0, imageArea.height()))};
    const double room = std::max(0.0, titleArea.width() - image.width);
    const Size title = room > 0 ? titleSize(room) : Size{};
    const double total = image.width + title.width;
    const auto place = [scale](double x, double y, Size size) {
        return Rect{{roundedToScale(x, scale), roundedToScale(y, scale)}, size};
    };
    _imageView->setFrame(place(imageArea.midX() - total / 2, imageArea.midY() - image.height / 2, image));
    _titleLabel->setFrame(
        place(titleArea.midX() - total / 2 + image.width, titleArea.midY() - title.height / 2, title));
}

// Look

void Button::focusDidChange() {
    _showsFocusFill = isFocused();
    const std::optional<Color> cutOut = isFocused() ? std::optional(groundBehind(*this)) : std::nullopt;
    _titleLabel->setOverrideColor(cutOut);
    _imageView->setOverrideColor(cutOut);
    setNeedsDisplay();
}

void Button::drawRect(Canvas& canvas, const Rect&) {
    if (const Image background = backgroundImageForState(currentState()))
        canvas.drawImage(background, bounds(), tintColor());
    if (_showsFocusFill) canvas.fillRoundedRect(bounds(), focusRadius, tintColor());
}

}  // namespace zornic
