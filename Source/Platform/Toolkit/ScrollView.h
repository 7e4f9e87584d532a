#pragma once

#include "Platform/Toolkit/GestureRecognizer.h"
#include "Platform/Toolkit/View.h"

namespace zornic {

/** Shows a part of content higher than itself; follows the finger, runs on with inertia, springs back from
   beyond its ends by at most `maximumBounce`. Main thread. */
class ScrollView : public View {
public:
    explicit ScrollView(const Rect& frame = {});
    void didMake() override;

    Size contentSize() const { return _contentSize; }
    void setContentSize(Size size);
    /** What is shown at the top left; the same as the bounds' origin. */
    Point contentOffset() const { return bounds().origin; }
    /** Kept within the content; stops inertia. Animated: eases there in 250 ms. */
    void setContentOffset(Point offset, bool animated);
    double maximumOffset() const;
    bool isDragging() const { return _dragging; }
    bool isDecelerating() const { return static_cast<bool>(_motion); }
    bool isScrollEnabled() const { return _scrollEnabled; }
    void setScrollEnabled(bool enabled);
    bool showsVerticalScrollIndicator() const { return _showsVertical; }
    void setShowsVerticalScrollIndicator(bool shows);
    bool showsHorizontalScrollIndicator() const { return _showsHorizontal; }
    void setShowsHorizontalScrollIndicator(bool shows);
    void flashScrollIndicators();

    void setBounds(const Rect& bounds) override;
    void setFrame(const Rect& frame) override;
    void layoutSubviews() override;
    void didMoveToWindow() override;
    /** A list that runs takes every touch itself: it stops, and nothing in it is pressed. */
    std::shared_ptr<View> hitTest(Point point) override;
    void touchBegan(const Touch& touch) override;
    void touchMoved(const Touch&) override {}
    void touchEnded(const Touch& touch) override;
    void touchCancelled(const Touch& touch) override;

protected:
    /** Points beyond either end that a drag or inertia may show. */
    virtual double maximumBounce() const { return 15; }
    /** Where inertia that would stop at `offset` is to stop instead. */
    virtual double alignedOffset(double offset) const { return offset; }
    /** Whether a finger put down there may drag the content. */
    virtual bool shouldDragBegin(const Touch&) const { return true; }
    /** The offset changed, by whatever cause. */
    virtual void contentOffsetDidChange() {}
    /** A finger's scrolling, with its inertia, or an animated one came to rest. */
    virtual void scrollingDidEnd() {}

private:
    void pan(PanGestureRecognizer& recognizer);
    void moveTo(double offset);
    double clamped(double offset) const { return std::clamp(offset, 0.0, maximumOffset()); }
    double rubberBanded(double offset) const;
    void settle(double velocity);
    void startInertia(double velocity);
    void glideTo(double offset, Seconds duration);
    void motionEnded();
    void placeIndicator();

    Size _contentSize;
    bool _scrollEnabled = true, _dragging = false, _isNearRest = false;
    bool _showsVertical = true, _showsHorizontal = true;
    std::shared_ptr<PanGestureRecognizer> _pan;
    std::shared_ptr<View> _indicator;
    double _offsetAtStart = 0;
    Token _motion, _flash;
};

}  // namespace zornic
