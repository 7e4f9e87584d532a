#include "Platform/Toolkit/TableViewCell.h"

#include "Platform/Toolkit/Animation.h"
#include "Platform/Toolkit/Canvas.h"
#include "Platform/Toolkit/PlayingMarkView.h"
#include "Platform/Toolkit/TableView.h"

namespace zornic {

namespace {

constexpr double margin = 12, accessoryGap = 8;
/** Baselines of a title over a detail line in a row of the usual height; higher rows centre the two lines. */
constexpr double usualHeight = 44, titleBaseline = 19, detailBaseline = 36;
constexpr Seconds fadeTime{0.15};
constexpr Color lightGround = Color::rgb(0x23272C);
/** How far a pressed row goes from the tint to white while it is focused. */
constexpr double pressedTint = 0.25;

std::uint64_t cellsMade = 0;

Color mixed(Color from, Color to, double part) {
    const auto mix = [part](double a, double b) { return a + (b - a) * part; };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue),
            mix(from.alpha, to.alpha)};
}

/** Hears that a text changed, and leaves the layout to its row, whose accessory bounds it. */
class RowContentView : public View {
public:
    void layoutSubviews() override {
        if (superview()) superview()->setNeedsLayout();
    }
};

}  // namespace

TableViewCell::TableViewCell(TableViewCellStyle style, std::string reuseIdentifier)
    : _style(style),
      _reuseIdentifier(std::move(reuseIdentifier)),
      _contentView(make<RowContentView>()),
      _textLabel(make<Label>()),
      _detailTextLabel(make<Label>()) {
    ++cellsMade;
}

void TableViewCell::didMake() {
    View::didMake();
    setBackgroundColor(_externalSystemExtraDarkGrayColor());
    _textLabel->setFont(Font::systemFont(17));
    _detailTextLabel->setFont(Font::systemFont(13));
    _detailTextLabel->setTextColor(_externalSystemGrayColor());
    _detailTextLabel->setHidden(_style == TableViewCellStyle::Default);
    if (_style == TableViewCellStyle::Value1 || _style == TableViewCellStyle::Value2)
        _detailTextLabel->setTextAlignment(TextAlignment::Right);
    // The row places them itself, and must hear when they change.
    _textLabel->setTranslatesAutoresizingMaskIntoConstraints(false);
    _detailTextLabel->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(_contentView);
    _contentView->addSubview(_textLabel);
    _contentView->addSubview(_detailTextLabel);
}

std::uint64_t TableViewCell::made() { return cellsMade; }

void TableViewCell::setAccessoryType(TableViewCellAccessory type) {
    if (type == _accessoryType) return;
    _accessoryType = type;
    if (_disclosureView) _disclosureView->removeFromSuperview();
    _disclosureView = nullptr;
    if (type != TableViewCellAccessory::None) {
        const auto image = Image::named("ToolkitDisclosure", Bundle::platformBundle(), {displayScale()});
        _disclosureView = make<ImageView>(image.withRenderingMode(ImageRenderingMode::AlwaysTemplate));
        addSubview(_disclosureView);
    }
    updateAccessory();
}

void TableViewCell::setAccessoryView(std::shared_ptr<View> view) {
    if (view == _accessoryView) return;
    updateAccessoryColor(std::nullopt);
    if (_accessoryView && _accessoryView->superview() == this) _accessoryView->removeFromSuperview();
    _accessoryView = std::move(view);
    if (_accessoryView) addSubview(_accessoryView);
    updateAccessory();
}

void TableViewCell::setPlayingMark(bool shown, bool moving) {
    if (shown && !_playingMark) {
        _playingMark = make<PlayingMarkView>();
        addSubview(_playingMark);
        updateAccessory();
    } else if (!shown && _playingMark) {
        _playingMark->removeFromSuperview();
        _playingMark = nullptr;
        updateAccessory();
    }
    if (_playingMark) _playingMark->setMoving(moving);
}

std::shared_ptr<View> TableViewCell::playingMark() const { return _playingMark; }

std::shared_ptr<View> TableViewCell::shownAccessory() const {
    if (_playingMark && !placesPlayingMark()) return _playingMark;
    return _accessoryView ? _accessoryView : _disclosureView;
}

void TableViewCell::updateAccessory() {
    const auto shown = shownAccessory();
    if (_accessoryView) _accessoryView->setHidden(_accessoryView != shown);
    if (_disclosureView) _disclosureView->setHidden(_disclosureView != shown);
    updateColors();
    setNeedsLayout();
}

void TableViewCell::setSeparatorInset(const EdgeInsets& inset) {
    if (inset == _separatorInset) return;
    _separatorInset = inset;
    setNeedsLayout();
    setNeedsDisplay();
}

void TableViewCell::setIndentationLevel(int level) {
    if (level == _indentationLevel) return;
    _indentationLevel = level;
    setNeedsLayout();
}

void TableViewCell::setIndentationWidth(double width) {
    if (width == _indentationWidth) return;
    _indentationWidth = width;
    setNeedsLayout();
}

void TableViewCell::setPlace(TableView* tableView, const IndexPath& indexPath) {
    _tableView = tableView;
    _indexPath = indexPath;
    if (!tableView) _subject = {};
}

void TableViewCell::setSeparator(bool shown, Color color, const EdgeInsets& tableInset) {
    if (shown == _separatorShown && color == _separatorColor && tableInset == _tableSeparatorInset) return;
    _separatorShown = shown;
    _separatorColor = color;
    _tableSeparatorInset = tableInset;
    setNeedsLayout();
    setNeedsDisplay();
}

void TableViewCell::prepareForReuse() {
    _highlighted = _selected = false;
    updateGround(false);
    setPlayingMark(false, false);
}

double TableViewCell::leftInset() const {
    if (_separatorInset.left != AutomaticDimension) return _separatorInset.left;
    return _tableSeparatorInset.left != AutomaticDimension ? _tableSeparatorInset.left : margin;
}

void TableViewCell::layoutSubviews() {
    View::layoutSubviews();
    placeAccessory();
    const auto accessory = shownAccessory();
    const double width = accessory ? accessory->frame().x() : bounds().width();
    _contentView->setFrame({0, 0, std::max(0.0, width), bounds().height()});
    const double left = leftInset() + _indentationLevel * _indentationWidth;
    layoutTexts(std::max(0.0, width - left - (accessory ? accessoryGap : margin)));
}

void TableViewCell::placeAccessory() {
    const auto accessory = shownAccessory();
    if (!accessory) return;
    Size size = accessory->frame().size;
    if (size.empty()) size = accessory->sizeThatFits(bounds().size);
    accessory->setFrame({{roundedToScale(bounds().width() - margin - size.width, displayScale()),
                          roundedToScale((bounds().height() - size.height) / 2, displayScale())},
                         size});
}

void TableViewCell::placeOnBaseline(Label& label, double x, double baseline, double width) const {
    const double scale = displayScale();
    // A line's height needs no layout of its whole text.
    const double height = label.numberOfLines() == 1
                              ? ceiledToScale(TextEngine::current().metrics(label.font()).lineHeight, scale)
                              : label.sizeThatFits({width, UnboundedLength}).height;
    label.setFrame({x, 0, width, height});
    label.setFrame({x, roundedToScale(baseline - label.firstBaselineFromTop(), scale), width, height});
}

void TableViewCell::layoutTexts(double width) {
    const double left = leftInset() + _indentationLevel * _indentationWidth;
    const double height = bounds().height();
    const bool hasDetail = !_detailTextLabel->isHidden() && !_detailTextLabel->styledText().empty();
    if (hasDetail && _style == TableViewCellStyle::Subtitle) {
        const double top = (height - usualHeight) / 2;
        placeOnBaseline(*_textLabel, left, top + titleBaseline, width);
        placeOnBaseline(*_detailTextLabel, left, top + detailBaseline, width);
        return;
    }
    const double detailWidth =
        hasDetail ? std::min(width / 2, _detailTextLabel->sizeThatFits({width, UnboundedLength}).width) : 0;
    const double titleWidth = width - (hasDetail ? detailWidth + accessoryGap : 0);
    const double titleHeight = _textLabel->sizeThatFits({titleWidth, UnboundedLength}).height;
    const double y = roundedToScale((height - titleHeight) / 2, displayScale());
    _textLabel->setFrame({left, y, titleWidth, titleHeight});
    placeOnBaseline(*_detailTextLabel, left + width - detailWidth, y + _textLabel->firstBaselineFromTop(),
                    detailWidth);
}

void TableViewCell::drawRect(Canvas& canvas, const Rect&) {
    if (isFocused()) {
        canvas.fillRect(bounds(), mixed(tintColor(), Color::whiteColor(), _highlighted ? pressedTint : 0));
        return;
    }
    if (_lightness > 0) canvas.fillRect(bounds(), lightGround.withAlpha(_lightness));
    if (!_separatorShown) return;
    const double pixel = 1 / canvas.scale();
    const double ownRight = _separatorInset.right, tableRight = _tableSeparatorInset.right;
    const double right = std::max(0.0, ownRight != AutomaticDimension ? ownRight : tableRight);
    canvas.fillRect({leftInset(), bounds().height() - pixel, bounds().width() - leftInset() - right, pixel},
                    _separatorColor);
}

void TableViewCell::setSelected(bool selected, bool animated) {
    if (selected == _selected) return;
    _selected = selected;
    updateGround(animated);
}

void TableViewCell::setHighlighted(bool highlighted) {
    if (highlighted == _highlighted) return;
    _highlighted = highlighted;
    updateGround(true);
}

void TableViewCell::updateGround(bool animated) {
    const double target = _highlighted || _selected ? 1 : 0;
    _fade.reset();
    setNeedsDisplay();
    if (target < _lightness && animated && window()) {
        _fade = animate(fadeTime, linear, [this, start = _lightness](double progress) {
            _lightness = start * (1 - progress);
            setNeedsDisplay();
        });
    } else {
        _lightness = target;
    }
}

std::optional<Color> TableViewCell::cutOutColor() const {
    return isFocused() ? std::optional(_externalSystemExtraDarkGrayColor()) : std::nullopt;
}

void TableViewCell::updateColors() {
    const auto cutOut = cutOutColor();
    _textLabel->setOverrideColor(cutOut);
    _detailTextLabel->setOverrideColor(cutOut);
    if (_disclosureView) _disclosureView->setOverrideColor(cutOut.value_or(_externalSystemGrayColor()));
    if (_playingMark) _playingMark->setColor(cutOut);
    updateAccessoryColor(cutOut);
}

void TableViewCell::updateAccessoryColor(const std::optional<Color>& cutOut) {
    if (const auto view = std::dynamic_pointer_cast<ImageView>(_accessoryView))
        view->setOverrideColor(cutOut);
}

void TableViewCell::focusDidChange() {
    View::focusDidChange();
    updateColors();
    setNeedsDisplay();
    if (isFocused() && _tableView) _tableView->rowDidBecomeFocused(_indexPath);
}

void TableViewCell::knobPressBegan() { setHighlighted(true); }

void TableViewCell::knobPressEnded(bool cancelled) {
    const auto self = shared_from_this();
    setHighlighted(false);
    if (!cancelled && _tableView) _tableView->rowWasActivated(_indexPath);
}

bool TableViewCell::isInside(const Touch& touch) const {
    return pointInside(convertFromWindow(touch.location));
}

void TableViewCell::touchBegan(const Touch&) { setHighlighted(true); }

void TableViewCell::touchEnded(const Touch& touch) {
    const auto self = shared_from_this();
    const bool pressed = _highlighted;
    setHighlighted(false);
    if (pressed && _tableView && isInside(touch)) _tableView->rowWasActivated(_indexPath);
}

void TableViewCell::touchCancelled(const Touch&) { setHighlighted(false); }

std::string TableViewCell::accessibilityText() const {
    const auto title = titleText(), detail = detailText();
    return title.empty() || detail.empty() ? title + detail : title + ", " + detail;
}

}  // namespace zornic
