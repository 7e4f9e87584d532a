#pragma once

#include "Platform/Toolkit/Label.h"

namespace zornic {

/** Elapsed time, a bar with a tick at the present place, and the time that remains; a live stream has a word
   instead. Main thread. */
class ZRNProgressView : public View {
public:
    using View::View;
    void didMake() override;

    /** Seconds. Both exactly -1: a live stream. No duration (0 or not a finite number) leaves it empty. */
    void setPlaybackTimeDuration(double elapsed, double duration);
    void layoutSubviews() override;

    const std::shared_ptr<Label>& timeLabel() const { return _timeLabel; }
    const std::shared_ptr<Label>& timeRemainingLabel() const { return _timeRemainingLabel; }
    const std::shared_ptr<View>& trackView() const { return _trackView; }
    const std::shared_ptr<View>& indicatorView() const { return _indicatorView; }
    /** The part that has played, 0 to 1. */
    float progress() const { return _progress; }
    bool isLive() const { return _isLive; }

private:
    std::shared_ptr<Label> addLabel();
    void layoutTrack();

    std::shared_ptr<Label> _timeLabel, _timeRemainingLabel;
    /** Room for the track between the labels. */
    std::shared_ptr<View> _progressView;
    std::shared_ptr<View> _trackView, _indicatorView;
    float _progress = 0;
    bool _isLive = false;
};

}  // namespace zornic
