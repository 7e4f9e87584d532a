#pragma once

#include "Views/ZRNButton.h"

namespace zornic {

/** The row of left, play/pause and fast-forward buttons. Under full touch they stand round the middle,
   otherwise they share the width. Main thread. */
class ZRNTransportControlView : public View {
public:
    using View::View;
    void didMake() override;

    /** While active the play/pause button shows the pause image. */
    bool isProgressActive() const { return _progressActive; }
    void setProgressActive(bool active);
    /** In mode 2 the buttons keep their places under full touch. */
    std::int32_t mode() const { return _mode; }
    void setMode(std::int32_t mode);
    const Image& pauseImage() const { return _pauseImage; }
    void setPauseImage(const Image& image);

    const std::shared_ptr<ZRNButton>& leftButton() const { return _leftButton; }
    const std::shared_ptr<ZRNButton>& playPauseButton() const { return _playPauseButton; }
    const std::shared_ptr<ZRNButton>& fastForwardButton() const { return _fastForwardButton; }
    /** Looked up afresh each time. */
    Image defaultLeftButtonImage() const;
    Image defaultFastForwardButtonImage() const;

    void layoutSubviews() override;

private:
    void _updateProgressActive();
    void layoutHighTouch();
    void layoutLowTouch();

    bool _progressActive = false;
    std::int32_t _mode = 0;
    std::shared_ptr<ZRNButton> _leftButton, _playPauseButton, _fastForwardButton;
    Image _pauseImage;
};

}  // namespace zornic
