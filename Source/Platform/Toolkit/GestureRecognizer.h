#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "Platform/Foundation/Object.h"
#include "Platform/Toolkit/Touch.h"

namespace zornic {

class View;

enum class GestureState { Possible, Began, Changed, Ended, Cancelled, Failed };

/** Watches a touch that began in its view. The first recogniser that begins (the innermost asked first) takes
   the touch from the view that was hit, which gets a cancel, and from the other recognisers. Main thread. */
class GestureRecognizer : public Object {
public:
    GestureState state() const { return _state; }
    View* view() const { return _view; }
    void setView(View* view) { _view = view; }
    bool isEnabled() const { return _enabled; }
    void setEnabled(bool enabled) { _enabled = enabled; }

    /** A new touch: back to Possible. False when the recogniser does not care for it. */
    virtual bool touchBegan(const Touch& touch) = 0;
    virtual void touchMoved(const Touch& touch) = 0;
    virtual void touchEnded(const Touch& touch) = 0;
    virtual void touchCancelled(const Touch& touch) = 0;

protected:
    void setState(GestureState state) { _state = state; }

private:
    GestureState _state = GestureState::Possible;
    View* _view = nullptr;
    bool _enabled = true;
};

/** A finger that moves along one axis by more than a slop. */
class PanGestureRecognizer : public GestureRecognizer {
public:
    enum class Axis { Vertical, Horizontal };
    /** `slop`: points of travel before it begins. */
    PanGestureRecognizer(Axis axis, double slop) : _axis(axis), _slop(slop) {}

    /** Called at each change of state while it is under way. */
    std::function<void(PanGestureRecognizer&)> handler;
    /** Asked when a touch begins; absent: every touch counts. */
    std::function<bool(const Touch&)> shouldBegin;
    /** Only travel in this direction begins it: +1, -1, or 0 for both. */
    int direction = 0;

    /** Travel since the touch began, in points. */
    double translation() const { return _translation; }
    /** Points a second over the last moments. */
    double velocity() const { return _velocity; }

    bool touchBegan(const Touch& touch) override;
    void touchMoved(const Touch& touch) override;
    void touchEnded(const Touch& touch) override;
    void touchCancelled(const Touch& touch) override;

private:
    double along(Point point) const { return _axis == Axis::Vertical ? point.y : point.x; }
    double across(Point point) const { return _axis == Axis::Vertical ? point.x : point.y; }
    void notify();
    void follow(const Touch& touch);

    const Axis _axis;
    const double _slop;
    Touch _start;
    std::deque<Touch> _recent;
    double _translation = 0, _velocity = 0;
};

/** A short touch that stays where it began. */
class TapGestureRecognizer : public GestureRecognizer {
public:
    std::function<void(TapGestureRecognizer&)> handler;

    bool touchBegan(const Touch& touch) override;
    void touchMoved(const Touch& touch) override;
    void touchEnded(const Touch& touch) override;
    void touchCancelled(const Touch& touch) override;

private:
    Touch _start;
};

}  // namespace zornic
