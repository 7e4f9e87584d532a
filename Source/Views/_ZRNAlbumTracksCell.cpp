#include "Views/_ZRNAlbumTracksCell.h"

namespace zornic {
namespace {

constexpr double margin = 12, numberWidth = 27, gapBeforeDuration = 9;

}  // namespace

_ZRNAlbumTracksCell::_ZRNAlbumTracksCell(TableViewCellStyle style, std::string reuseIdentifier)
    : TableViewCell(style, std::move(reuseIdentifier)),
      _trackNumberLabel(make<Label>()),
      _titleLabel(make<Label>()),
      _durationLabel(make<Label>()) {}

void _ZRNAlbumTracksCell::didMake() {
    TableViewCell::didMake();
    _titleLabel->setFont(Font::boldSystemFont(17));
    _titleLabel->setTextColor(Color::whiteColor());
    _trackNumberLabel->setFont(Font::systemFont(16));
    _trackNumberLabel->setTextColor(_externalSystemGrayColor());
    // Numbers of three digits and more stay inside their column.
    _trackNumberLabel->setAdjustsFontSizeToFitWidth(true);
    _trackNumberLabel->setMinimumScaleFactor(0.5);
    _durationLabel->setFont(durationFont());
    _durationLabel->setTextColor(_externalSystemGrayColor());
    _durationLabel->setTextAlignment(TextAlignment::Right);
    for (const auto& label : {_trackNumberLabel, _titleLabel, _durationLabel}) {
        label->setTranslatesAutoresizingMaskIntoConstraints(false);
        contentView()->addSubview(label);
    }
}

void _ZRNAlbumTracksCell::setText(Label& label, const std::string& text) {
    if (text == label.text()) return;
    label.setText(text);
    setNeedsLayout();
}

void _ZRNAlbumTracksCell::setTitle(const std::string& title) { setText(*_titleLabel, title); }

void _ZRNAlbumTracksCell::setTrackNumberText(const std::string& text) { setText(*_trackNumberLabel, text); }

void _ZRNAlbumTracksCell::setDurationText(const std::string& text) { setText(*_durationLabel, text); }

void _ZRNAlbumTracksCell::setMaximumDurationWidth(double width) {
    if (width == _maximumDurationWidth) return;
    _maximumDurationWidth = width;
    setNeedsLayout();
}

void _ZRNAlbumTracksCell::layoutSubviews() {
    TableViewCell::layoutSubviews();
    const double scale = displayScale(), width = contentView()->bounds().width();
    const double height = bounds().height();
    const double durationWidth = ceiledToScale(
        _maximumDurationWidth < 0 ? _durationLabel->sizeThatFits({UnboundedLength, UnboundedLength}).width
                                  : _maximumDurationWidth,
        scale);
    const double durationLeft = width - margin - durationWidth, titleLeft = margin + numberWidth;
    // Number and duration stand on the title's line.
    const Font font = _titleLabel->font();
    const double baseline = (height - font.ascender() + font.descender()) / 2 + font.ascender();
    placeOnBaseline(*_titleLabel, titleLeft, baseline,
                    std::max(0.0, durationLeft - gapBeforeDuration - titleLeft));
    placeOnBaseline(*_trackNumberLabel, margin, baseline, numberWidth);
    placeOnBaseline(*_durationLabel, durationLeft, baseline, durationWidth);

    const auto mark = playingMark();
    _trackNumberLabel->setHidden(mark != nullptr);
    if (!mark) return;
    const Size size = mark->sizeThatFits(bounds().size);
    mark->setFrame({{margin, roundedToScale((height - size.height) / 2, scale)}, size});
}

void _ZRNAlbumTracksCell::updateColors() {
    TableViewCell::updateColors();
    for (const auto& label : {_trackNumberLabel, _titleLabel, _durationLabel})
        label->setOverrideColor(cutOutColor());
}

}  // namespace zornic
