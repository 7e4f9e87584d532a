#include "Views/ZRNAlbumsDetailTableHeaderView.h"

#include <cmath>

#include "Platform/Foundation/TextTools.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNRowMetrics.h"
#include "Utilities/ZRNStrings.h"

namespace zornic {
namespace {

constexpr double gapBeforeButton = 10, gapBetweenLines = 1;
/** Where the glyph ends; the button around it is as large as a finger needs. */
constexpr double glyphMargin = 18;
constexpr double buttonSide = 44;
constexpr double subtitleSize = 12;

/** Text with its parts between "#" in bold. */
StyledText emphasized(const std::string& labelTemplate) {
    StyledText text;
    bool bold = false;
    for (const auto& part : splitted(labelTemplate, '#')) {
        const Font font = bold ? Font::boldSystemFont(subtitleSize) : Font::systemFont(subtitleSize);
        if (!part.empty()) text.append(part, {.font = font, .color = {}, .backgroundColor = {}});
        bold = !bold;
    }
    text.lineBreakMode = LineBreakMode::TruncatingTail;
    return text;
}

}  // namespace

ZRNAlbumsDetailTableHeaderView::ZRNAlbumsDetailTableHeaderView(std::string reuseIdentifier)
    : TableHeaderFooterView(std::move(reuseIdentifier)),
      _ground(make<GradientView>()),
      _titleLabel(make<Label>()),
      _subtitleLabel(make<Label>()),
      _artworkView(make<ImageView>()),
      _shuffleButton(make<Button>()) {}

void ZRNAlbumsDetailTableHeaderView::didMake() {
    TableHeaderFooterView::didMake();
    textLabel()->setHidden(true);
    setBackgroundColor(_externalSystemExtraDarkGrayColor());
    // An album rises out of the ground of the rows before it, and its own rows go on from its lower edge.
    _ground->setColors({_externalSystemDarkGrayColor(), _externalSystemExtraDarkGrayColor()});
    _titleLabel->setFont(Font::boldSystemFont(16));
    _titleLabel->setTextColor(Color::whiteColor());
    _subtitleLabel->setFont(Font::systemFont(subtitleSize));
    _subtitleLabel->setTextColor(_externalSystemGrayColor());
    _artworkView->setContentMode(ContentMode::AspectFit);
    const Image glyph = ZRNHelmoImage("HelmoShuffleButton").flattenedWithColor(_externalSystemGrayColor());
    _shuffleButton->setImage(glyph, ControlState::Normal);
    _shuffleButton->addTarget(this, &ZRNAlbumsDetailTableHeaderView::_shuffleButtonAction,
                              ControlEvent::TouchUpInside);
    const std::initializer_list<std::shared_ptr<View>> views = {_ground, _artworkView, _titleLabel,
                                                                _subtitleLabel, _shuffleButton};
    for (const auto& view : views) contentView()->addSubview(view);
}

void ZRNAlbumsDetailTableHeaderView::setTitle(const std::string& title) {
    _titleLabel->setText(title);
    setNeedsLayout();
}

void ZRNAlbumsDetailTableHeaderView::setDurationCount(double duration, std::uint64_t count) {
    const auto minutes = static_cast<std::int64_t>(std::round(duration / 60.0));
    _subtitleLabel->setStyledText(emphasized(ZRNAlbumDetailFormat(count, minutes)));
    setNeedsLayout();
}

void ZRNAlbumsDetailTableHeaderView::_shuffleButtonAction(const std::shared_ptr<Control>& sender) {
    // What it does may take this header away.
    const auto action = _shuffleActionBlock;
    if (action) action(std::dynamic_pointer_cast<Button>(sender));
}

void ZRNAlbumsDetailTableHeaderView::layoutSubviews() {
    TableHeaderFooterView::layoutSubviews();
    const Size size = bounds().size;
    const double scale = displayScale();
    const Rect artworkFrame = ZRNRowArtworkFrame();
    _ground->setFrame(bounds());
    _artworkView->setFrame(artworkFrame);
    const double glyphWidth = _shuffleButton->imageForState(ControlState::Normal).size().width;
    const double buttonLeft = size.width - glyphMargin - (glyphWidth + buttonSide) / 2;
    _shuffleButton->setFrame({buttonLeft, (size.height - buttonSide) / 2, buttonSide, buttonSide});

    const double left = artworkFrame.maxX() + ZRNGapAfterRowArtwork;
    const double width = std::max(0.0, buttonLeft - gapBeforeButton - left);
    const double titleHeight = ceiledToScale(_titleLabel->font().lineHeight(), scale);
    const double subtitleHeight = ceiledToScale(_subtitleLabel->font().lineHeight(), scale);
    // Both lines together are centred on the artwork.
    const double middle = artworkFrame.y() + artworkFrame.height() / 2;
    const double top = roundedToScale(middle - (titleHeight + gapBetweenLines + subtitleHeight) / 2, scale);
    _titleLabel->setFrame({left, top, width, titleHeight});
    _subtitleLabel->setFrame({left, top + titleHeight + gapBetweenLines, width, subtitleHeight});
}

std::string ZRNAlbumsDetailTableHeaderView::accessibilityText() const { return title() + ", " + subtitle(); }

}  // namespace zornic
