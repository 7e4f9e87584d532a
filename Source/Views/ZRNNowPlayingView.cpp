#include "Views/ZRNNowPlayingView.h"

#include <cmath>

#include "Utilities/ZRNHelmoScreen.h"

namespace zornic {
namespace {

constexpr double sideMargin = 12;
constexpr double artistBaseline = 54, titleBaseline = 87.5, albumBaseline = 107;
constexpr double progressHeight = 12, progressBottom = 50.5;
constexpr double glyphGap = 9, smallestText = 0.8;

}  // namespace

void ZRNNowPlayingView::didMake() {
    View::didMake();
    setBackgroundColor(_externalSystemExtraDarkGrayColor());
    setClipsToBounds(true);  // the artwork is square, the display is not
    _artworkView = make<ImageView>();
    _artworkView->setContentMode(ContentMode::AspectFill);
    _artworkView->layer()->setFilters({{ColorFilterType::Saturate, 1.592},
                                       {ColorFilterType::Brightness, -2.5},
                                       {ColorFilterType::Contrast, 0.12}});
    addSubview(_artworkView);
    _gradientView = make<GradientView>();
    _gradientView->setColors({Color::blackColor(), Color::blackColor().withAlpha(0)});
    addSubview(_gradientView);
    layer()->setKeptSublayers(2);  // filtering and shading the whole display is no work for each second
    _progressView = make<ZRNProgressView>();
    addSubview(_progressView);
    _artistLabel = _addLabelWithFont(Font::boldSystemFont(16));
    _titleLabel = _addLabelWithFont(Font::thinSystemFont(32.5));
    _albumLabel = _addLabelWithFont(Font::systemFont(12));
}

std::shared_ptr<Label> ZRNNowPlayingView::_addLabelWithFont(Font font) {
    const auto label = make<Label>();
    label->setFont(font);
    label->setTextColor(Color::whiteColor());
    label->setBackgroundColor(Color::clear());
    label->setTextAlignment(TextAlignment::Center);
    label->setAdjustsFontSizeToFitWidth(true);
    label->setMinimumScaleFactor(smallestText);
    addSubview(label);
    return label;
}

void ZRNNowPlayingView::setExplicitTrack(bool explicitTrack) {
    if (explicitTrack == _explicitTrack) return;
    _explicitTrack = explicitTrack;
    if (explicitTrack) {
        const Image glyph = ZRNHelmoImage("HelmoExplicitGlyph").flattenedWithColor(Color::whiteColor());
        _explicitImageView = make<ImageView>(glyph);
        addSubview(_explicitImageView);
    } else {
        _explicitImageView->removeFromSuperview();
        _explicitImageView = nullptr;
    }
    setNeedsLayout();
}

void ZRNNowPlayingView::layoutSubviews() {
    View::layoutSubviews();
    const Rect all = bounds();
    const Rect inner = all.inset(sideMargin, 0);
    const Rect square{all.x(), all.height() * 0.5 - all.width() * 0.5, all.width(), all.width()};
    _artworkView->setFrame(square);
    _gradientView->setFrame(square);
    _progressView->setFrame(
        {inner.x(), inner.maxY() - progressBottom - progressHeight, inner.width(), progressHeight});
    _layoutLabelBaseLineFromTopInBounds(*_artistLabel, artistBaseline, inner);
    layoutTitle(inner);
    _layoutLabelBaseLineFromTopInBounds(*_albumLabel, albumBaseline, inner);
}

/** The wider the title, the further it moves aside for the mark that follows it. */
void ZRNNowPlayingView::layoutTitle(const Rect& inner) {
    if (!_explicitImageView) return _layoutLabelBaseLineFromTopInBounds(*_titleLabel, titleBaseline, inner);
    const Size glyph = _explicitImageView->image().size();
    const double room = glyph.width + glyphGap, half = room / 2;
    Rect title = placeOf(*_titleLabel, titleBaseline, inner.inset(half, 0));
    if (inner.width() > 0) title.origin.x -= half * ((room + title.width()) / inner.width());
    _titleLabel->setFrame(title);
    _explicitImageView->setFrame({{title.maxX() + glyphGap, titleBaseline - glyph.height}, glyph});
}

void ZRNNowPlayingView::_layoutLabelBaseLineFromTopInBounds(Label& label, double baseline,
                                                            const Rect& bounds) {
    label.setFrame(placeOf(label, baseline, bounds));
}

Rect ZRNNowPlayingView::placeOf(Label& label, double baseline, const Rect& bounds) {
    const double scale = displayScale();
    Size size = label.sizeThatFits({});
    size.width = std::min(size.width, std::max(0.0, bounds.width()));
    const double x = roundedToScale(bounds.midX() - size.width / 2, scale);
    if (size.empty()) {  // keeps the line's height where there is no text
        const Font font = label.font();
        const double y = baseline - roundedToScale(font.lineHeight() + font.descender(), scale);
        return {x, y, size.width, ceiledToScale(font.lineHeight(), scale)};
    }
    label.setFrame({label.frame().origin, size});  // a text that is shrunk to fit has another baseline
    return {x, baseline - (size.height - label.baselineOffsetFromBottom()), size.width, size.height};
}

}  // namespace zornic
