#pragma once

#include <memory>
#include <vector>

#include "Platform/Toolkit/GestureRecognizer.h"
#include "Platform/Toolkit/View.h"

namespace zornic {

/** One finger from its touch down to its lift: to the view that was hit and the recognisers around it, until
   one of these takes it. Everything is held weakly, so views may vanish meanwhile. Main thread. */
class WindowTouches {
public:
    bool isActive() const { return _active; }
    /** `hit` may be none: the touch then reaches nothing. */
    void down(const std::shared_ptr<View>& hit, const Touch& touch);
    void move(const Touch& touch);
    void up(const Touch& touch);
    void cancel(TimePoint time);

private:
    std::vector<std::shared_ptr<GestureRecognizer>> watching() const;
    /** Whether one has the touch to itself now; the others and the view are told. */
    bool takenBy(const std::shared_ptr<GestureRecognizer>& recognizer, const Touch& touch);
    void cancelHit(const Touch& touch);
    /** The view that was hit, while it is still on the window; one that left is told once. */
    std::shared_ptr<View> hitOnWindow(const Touch& touch);

    bool _active = false;
    std::weak_ptr<View> _hit;
    /** Innermost first; one only once it has taken the touch. */
    std::vector<std::weak_ptr<GestureRecognizer>> _recognizers;
    bool _taken = false;
    Touch _last;
};

}  // namespace zornic
