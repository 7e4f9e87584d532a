#pragma once

#include "Platform/Toolkit/View.h"

namespace zornic {

/** Says that something is under way; turns while started and on a window, ten steps a second. Main thread. */
class ActivityIndicatorView : public View {
public:
    explicit ActivityIndicatorView(int style = 0);
    void startAnimating();
    void stopAnimating();
    bool isAnimating() const { return _animating; }
    Size sizeThatFits(Size) override { return {20, 20}; }
    bool hasIntrinsicSize() const override { return true; }
    void drawRect(Canvas& canvas, const Rect& dirty) override;
    void didMoveToWindow() override;

private:
    void updateTimer();
    const int _style;
    bool _animating = false;
    int _step = 0;
    Token _timer;
};

}  // namespace zornic
