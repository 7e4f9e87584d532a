#include "Views/ZRNProgressView.h"

#include <cmath>
#include <limits>

#include "Platform/LibraryKit/PlayerStrings.h"
#include "Platform/Toolkit/Animation.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {
namespace {

constexpr double labelWidth = 52, fontSize = 12, trackHeight = 2.5, indicatorWidth = 1.5;
/** Ten hours of a book still fit. */
constexpr double smallestTime = 0.75;
/** Nothing lasts longer, and every whole number up to it is exact. */
constexpr double longestTime = 9007199254740992.0;

std::int64_t wholeSeconds(double seconds) {
    return static_cast<std::int64_t>(std::floor(std::min(seconds, longestTime)));
}

}  // namespace

void ZRNProgressView::didMake() {
    View::didMake();
    _timeLabel = addLabel();
    _timeRemainingLabel = addLabel();
    _progressView = make<View>();
    addSubview(_progressView);
    _trackView = make<View>();
    _trackView->setBackgroundColor(_externalSystemExtraDarkGrayColor());
    _progressView->addSubview(_trackView);
    _indicatorView = make<View>();
    _indicatorView->setBackgroundColor(Color::whiteColor());
    _trackView->addSubview(_indicatorView);
}

std::shared_ptr<Label> ZRNProgressView::addLabel() {
    const auto label = make<Label>();
    label->setFont(Font::systemFont(fontSize));
    label->setTextColor(Color::whiteColor());
    label->setTextAlignment(TextAlignment::Center);
    label->setAdjustsFontSizeToFitWidth(true);
    label->setMinimumScaleFactor(smallestTime);
    addSubview(label);
    return label;
}

void ZRNProgressView::setPlaybackTimeDuration(double elapsed, double duration) {
    std::string elapsedText, remainingText;
    bool hasPlace = true;
    _isLive = elapsed == -1 && duration == -1;
    _progress = 0;
    if (_isLive) {
        remainingText = ZRNLocalizedString("LIVE_STREAMING");
    } else if (std::isfinite(duration) && duration > std::numeric_limits<float>::min() &&
               std::isfinite(elapsed)) {
        const double played = std::max(elapsed, 0.0);
        _progress = static_cast<float>(std::min(played / duration, 1.0));
        elapsedText = progressString(wholeSeconds(played), ProgressKind::Time);
        const double remaining = std::max(duration - std::floor(played), 0.0);
        remainingText = progressString(-wholeSeconds(remaining), ProgressKind::Remaining);
    } else {
        hasPlace = false;
    }
    _indicatorView->setHidden(!hasPlace);
    _timeLabel->setText(elapsedText);
    _timeRemainingLabel->setText(remainingText);
    setNeedsLayout();
}

void ZRNProgressView::layoutSubviews() {
    View::layoutSubviews();
    _timeLabel->setHidden(_isLive);
    _progressView->setHidden(_isLive);
    const Rect area = bounds();
    if (_isLive) {
        _timeRemainingLabel->setFrame(area);
        return;
    }
    _timeLabel->setFrame({area.origin, {labelWidth, area.height()}});
    _timeRemainingLabel->setFrame({area.maxX() - labelWidth, area.y(), labelWidth, area.height()});
    _progressView->setFrame(area.inset(labelWidth, 0));
    WithoutAnimation::run([this] { layoutTrack(); });
}

void ZRNProgressView::layoutTrack() {
    const Rect room = _progressView->bounds();
    _trackView->setFrame({0, std::floor(room.height() * 0.5 - trackHeight / 2), room.width(), trackHeight});
    const double place = std::floor(static_cast<double>(_progress) * room.width());
    _indicatorView->setFrame({place, 0, indicatorWidth, trackHeight});
}

}  // namespace zornic
