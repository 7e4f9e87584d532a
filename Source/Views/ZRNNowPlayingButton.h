#pragma once

#include "Platform/Toolkit/Button.h"

namespace zornic {

/** The button in a list's bar that leads to Now Playing: text, then an arrow, behind a hairline at its left
   edge. Pressed, its colours change places. Main thread. */
class ZRNNowPlayingButton : public Button {
public:
    /** As large as its content, whatever the height of the bar that it is for. */
    static std::shared_ptr<ZRNNowPlayingButton> buttonWithHeight(double height);
    using Button::Button;
    void didMake() override;

    bool hidesLeftBorder() const { return _hidesLeftBorder; }
    void setHidesLeftBorder(bool hides);

    void sizeToFit() override;
    void layoutSubviews() override;
    bool canBecomeFocused() const override { return true; }
    void focusDidChange() override;

private:
    void updateLeftBorder();
    void updateColors();

    std::shared_ptr<Layer> _leftBorder, _focusColorLayer;
    bool _hidesLeftBorder = false;
};

/** A Now Playing button in a view that goes into a bar item. `action` runs on touch up inside while `target`,
   held weakly, lives. */
std::shared_ptr<View> ZRNViewForNowPlayingButton(double height, const std::shared_ptr<Object>& target,
                                                 Control::Action action, bool hidesLeftBorder);

}  // namespace zornic
