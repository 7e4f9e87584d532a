#include "Platform/Toolkit/NavigationBar.h"

#include <algorithm>

#include "Platform/Toolkit/Canvas.h"

namespace zornic {

namespace {

constexpr double backWidth = 52, sideMargin = 12, gap = 8;
/** A right item's view stands so far from the edge; a button inside may reach over to the edge itself. */
constexpr double rightMargin = 17;

}  // namespace

NavigationBar::NavigationBar() : View({0, 0, 0, height}) {}

void NavigationBar::didMake() {
    View::didMake();
    _titleLabel = make<Label>();
    _titleLabel->setFont(Font::boldSystemFont(17));
    _titleLabel->setTextAlignment(TextAlignment::Center);
    _promptLabel = make<Label>();
    _promptLabel->setFont(Font::systemFont(11));
    _promptLabel->setTextColor(_externalSystemGrayColor());
    _promptLabel->setTextAlignment(TextAlignment::Center);

    _backButton = make<Button>();
    const auto chevron = Image::named("ToolkitBackChevron", Bundle::platformBundle(), {displayScale()});
    _backButton->setImage(chevron.withRenderingMode(ImageRenderingMode::AlwaysTemplate),
                          ControlState::Normal);
    _backButton->setTintColor(_externalSystemTealColor());
    _backButton->setHidden(true);
    _backButton->addTarget(
        shared_from_this(),
        [this](const auto&) {
            if (const auto back = onBack) back();
        },
        ControlEvent::TouchUpInside);
    for (const std::shared_ptr<View> view : {_titleLabel, _promptLabel}) addSubview(view);
    addSubview(_backButton);
}

void NavigationBar::setItems(std::vector<std::shared_ptr<NavigationItem>> items) {
    if (!_items.empty()) _items.back()->didChange = nullptr;
    _items = std::move(items);
    if (!_items.empty()) {
        _items.back()->didChange = [weakSelf = weak(this)] {
            if (const auto self = weakSelf.lock()) self->showTopItem();
        };
    }
    showTopItem();
}

void NavigationBar::setBarColor(std::optional<Color> color) {
    if (color == _barColor) return;
    _barColor = color;
    setNeedsDisplay();
}

void NavigationBar::setHidesShadow(bool hides) {
    if (hides == _hidesShadow) return;
    _hidesShadow = hides;
    setNeedsDisplay();
}

void NavigationBar::fillSlot(std::shared_ptr<View>& slot, std::shared_ptr<View> view) {
    if (slot == view && (!view || view->superview() == this)) return;
    if (slot && slot->superview() == this) slot->removeFromSuperview();
    slot = std::move(view);
    if (slot) addSubview(slot);
}

void NavigationBar::showTopItem() {
    const auto item = _items.empty() ? nullptr : _items.back();
    const auto titleView = item ? item->titleView() : nullptr;
    const auto right = item ? item->rightBarButtonItem() : nullptr;
    _titleLabel->setText(item && !titleView ? item->title() : std::string{});
    _promptLabel->setText(item ? item->prompt() : std::string{});
    fillSlot(_titleView, titleView);
    fillSlot(_rightView, right ? right->customView() : nullptr);
    _backButton->setHidden(_items.size() < 2);
    setNeedsLayout();
}

void NavigationBar::layoutSubviews() {
    View::layoutSubviews();
    const Rect area = bounds();
    _backButton->setFrame({0, 0, backWidth, area.height()});
    placeRightView();
    const double left = _backButton->isHidden() ? sideMargin : backWidth + gap;
    const double right =
        _rightView && !_rightView->isHidden() ? _rightView->frame().x() - gap : area.width() - sideMargin;
    placeTitle(left, std::max(left, right));
}

void NavigationBar::placeRightView() {
    if (!_rightView) return;
    Rect place = _rightView->frame();
    if (place.size.empty()) place.size = _rightView->sizeThatFits({bounds().width() / 2, bounds().height()});
    place.origin.x = bounds().width() - rightMargin - place.width();
    if (place.y() == 0)
        place.origin.y =
            std::max(0.0, roundedToScale((bounds().height() - place.height()) / 2, displayScale()));
    _rightView->setFrame(place);
}

/** Centred in the bar as long as it fits there, else in what back and right item leave. */
void NavigationBar::placeTitle(double left, double right) {
    const double room = right - left;
    const auto across = [&](double width) {
        const double fitted = std::min(width, room);
        const double centred = (bounds().width() - fitted) / 2;
        return std::pair(std::clamp(centred, left, std::max(left, right - fitted)), fitted);
    };
    const double scale = displayScale();
    const bool hasPrompt = !_promptLabel->text().empty();
    double top = 0;
    if (hasPrompt) {
        const Size size = _promptLabel->sizeThatFits({room, bounds().height()});
        const auto [x, width] = across(ceiledToScale(size.width, scale));
        _promptLabel->setFrame({x, 3, width, size.height});
        top = 3 + size.height - 2;  // the two lines stand as one block
    }
    _promptLabel->setHidden(!hasPrompt);
    View& title = _titleView ? *_titleView : static_cast<View&>(*_titleLabel);
    Size size = title.sizeThatFits({room, bounds().height() - top});
    if (!_titleView) size = {ceiledToScale(size.width, scale), ceiledToScale(size.height, scale)};
    const auto [x, width] = across(size.width);
    const double below = bounds().height() - top, tall = std::min(size.height, below);
    title.setFrame({x, roundedToScale(top + (below - tall) / 2, scale), width, tall});
}

void NavigationBar::drawRect(Canvas& canvas, const Rect&) {
    const Color ground = _barColor.value_or(_externalSystemBarBackgroundColor());
    if (ground.alpha > 0) canvas.fillRect(bounds(), ground);
    if (_hidesShadow) return;
    const double line = 1 / displayScale();
    canvas.fillRect({0, bounds().height() - line, bounds().width(), line}, _externalSystemDarkGrayColor());
}

}  // namespace zornic
