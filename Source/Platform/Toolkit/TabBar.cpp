#include "Platform/Toolkit/TabBar.h"

#include <algorithm>
#include <limits>

#include "Platform/Toolkit/Canvas.h"

namespace zornic {

namespace {

constexpr double iconSide = 22, iconCenter = 15, labelBaseline = 37, labelMargin = 2;
constexpr double maximumTabWidth = 120, fillRadius = 8;

}  // namespace

// TabBarButton

TabBarButton::TabBarButton(TabBarItem item) : _item(std::move(item)) {}

void TabBarButton::didMake() {
    Control::didMake();
    _imageView = make<ImageView>(_item.image);
    _imageView->setContentMode(ContentMode::AspectFit);
    _label = make<Label>();
    _label->setFont(Font::systemFont(11));
    _label->setTextAlignment(TextAlignment::Center);
    _label->setText(_item.title);
    addSubview(_imageView);
    addSubview(_label);
    updateLook();
}

void TabBarButton::setSelected(bool selected) {
    if (selected == isSelected()) return;
    Control::setSelected(selected);
    updateLook();
}

void TabBarButton::setHighlighted(bool highlighted) {
    Control::setHighlighted(highlighted);
    setNeedsDisplay();
}

void TabBarButton::focusDidChange() {
    Control::focusDidChange();
    updateLook();
}

void TabBarButton::updateLook() {
    Image image = isSelected() && _item.selectedImage ? _item.selectedImage : _item.image;
    std::optional<Color> color;
    if (isFocused()) {
        color = _externalSystemBarBackgroundColor();  // cut out of the fill
        if (image) image = image.flattenedWithColor(*color);
    } else if (!isSelected()) {
        color = _externalSystemGrayColor();
    }
    _imageView->setImage(image);
    _imageView->setOverrideColor(color);
    _label->setTextColor(color.value_or(tintColor()));
    setNeedsDisplay();
}

void TabBarButton::layoutSubviews() {
    Control::layoutSubviews();
    const double width = bounds().width(), scale = displayScale();
    const double iconX = roundedToScale((width - iconSide) / 2, scale);
    _imageView->setFrame({iconX, iconCenter - iconSide / 2, iconSide, iconSide});
    const double room = std::max(0.0, width - 2 * labelMargin);
    const double textHeight = _label->sizeThatFits({room, bounds().height()}).height;
    _label->setFrame({labelMargin, 0, room, textHeight});
    const double top = roundedToScale(labelBaseline - _label->firstBaselineFromTop(), scale);
    _label->setFrame({labelMargin, top, room, textHeight});
}

void TabBarButton::drawRect(Canvas& canvas, const Rect&) {
    const Rect fill = bounds().inset(2, 1);
    if (isFocused())
        canvas.fillRoundedRect(fill, fillRadius, isHighlighted() ? tintColor().withAlpha(0.8) : tintColor());
    else if (isHighlighted())
        canvas.fillRoundedRect(fill, fillRadius, _externalSystemSuperDarkGrayColor());
}

// TabBar

TabBar::TabBar() : View({0, 0, 0, height}) {}

void TabBar::setItems(const std::vector<TabBarItem>& items) {
    auto old = std::exchange(_buttons, {});
    for (const TabBarItem& item : items) {
        const auto kept = std::find_if(old.begin(), old.end(),
                                       [&](const auto& button) { return button && button->item() == item; });
        _buttons.push_back(kept != old.end() ? std::exchange(*kept, nullptr) : makeButton(item));
    }
    for (const auto& button : old)
        if (button) button->removeFromSuperview();
    setSelectedIndex(_selectedIndex);
    setNeedsLayout();
}

std::shared_ptr<TabBarButton> TabBar::makeButton(const TabBarItem& item) {
    auto button = make<TabBarButton>(item);
    button->addTarget(
        shared_from_this(),
        [this](const std::shared_ptr<Control>& sender) {
            const auto at = std::find(_buttons.begin(), _buttons.end(), sender);
            const auto picked = onPick;
            if (at != _buttons.end() && picked) picked(static_cast<std::size_t>(at - _buttons.begin()));
        },
        ControlEvent::TouchUpInside);
    addSubview(button);
    return button;
}

void TabBar::setSelectedIndex(std::optional<std::size_t> index) {
    _selectedIndex = index && *index < _buttons.size() ? index : std::nullopt;
    for (std::size_t i = 0; i < _buttons.size(); ++i) _buttons[i]->setSelected(_selectedIndex == i);
}

void TabBar::setAccessoryView(std::shared_ptr<View> view) {
    if (view == _accessoryView) return;
    if (_accessoryView && _accessoryView->superview() == this) _accessoryView->removeFromSuperview();
    _accessoryView = std::move(view);
    if (_accessoryView) {
        if (_accessoryView->frame().width() <= 0) _accessoryView->sizeToFit();
        addSubview(_accessoryView);
    }
    setNeedsLayout();
}

double TabBar::tabsWidth() const {
    const double accessory = _accessoryView ? _accessoryView->frame().width() : 0;
    return std::max(0.0, bounds().width() - accessory);
}

std::size_t TabBar::capacity() const {
    if (bounds().width() <= 0) return std::numeric_limits<std::size_t>::max();
    return std::max<std::size_t>(1, static_cast<std::size_t>(tabsWidth() / minimumTabWidth));
}

/** Tabs share the width evenly; few of them stay together at the left, where the driver's hand finds them. */
void TabBar::layoutSubviews() {
    View::layoutSubviews();
    const double scale = displayScale();
    if (_accessoryView) {
        const double width = _accessoryView->frame().width();
        _accessoryView->setFrame({bounds().width() - width, 0, width, bounds().height()});
    }
    if (_buttons.empty()) return;
    const double width =
        flooredToScale(std::min(maximumTabWidth, tabsWidth() / static_cast<double>(_buttons.size())), scale);
    double x = 0;
    for (const auto& button : _buttons) {
        button->setFrame({x, 0, width, bounds().height()});
        x += width;
    }
}

void TabBar::drawRect(Canvas& canvas, const Rect&) {
    canvas.fillRect(bounds(), _externalSystemBarBackgroundColor());
    const double line = 1 / displayScale();
    canvas.fillRect({0, bounds().height() - line, bounds().width(), line}, _externalSystemDarkGrayColor());
}

}  // namespace zornic
