#pragma once

#include <functional>
#include <memory>

#include "Platform/Foundation/Task.h"
#include "Platform/Toolkit/NavigationBar.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

/** One push or pop under way: the two screens, the bar where it comes or goes with one of them, and how far
   it has come. The upper screen slides over the whole width, the lower one a third. Main thread. */
class NavigationTransition {
public:
    enum class Kind { Push, Pop };
    /** `from` may be none: the first screen of a stack. */
    NavigationTransition(Kind kind, std::shared_ptr<ViewController> from, std::shared_ptr<ViewController> to,
                         bool animated, bool interactive);

    bool isPush() const { return _kind == Kind::Push; }
    bool isAnimated() const { return _animated; }
    /** A finger began it. */
    bool isInteractive() const { return _interactive; }
    /** A finger has it at the moment. */
    bool isHeld() const { return _held; }
    /** Let go so that it runs back. */
    bool isCancelling() const { return _cancelling; }
    const std::shared_ptr<ViewController>& from() const { return _from; }
    const std::shared_ptr<ViewController>& to() const { return _to; }

    /** The will calls. */
    void begin();
    /** The did calls; without `appeared` the new screen's waits for the container, which is itself still
     * appearing. */
    void end(bool cancelled, bool appeared);
    /** From 0 to 1; moves the views. */
    void setProgress(double progress);
    double progress() const { return _progress; }
    /** Moves `bar` with the screen that has it. */
    void carryBar(std::shared_ptr<NavigationBar> bar, bool withUpperScreen);
    bool carriesBar() const { return _bar != nullptr; }
    void hold();
    /** Goes the rest of the way by itself, then calls `done`. */
    void settle(bool cancelled, std::function<void()> done);
    /** Ends the motion, with everything at its own place. */
    void rest();

private:
    Point upperOffset() const;
    Point lowerOffset() const;

    const Kind _kind;
    const std::shared_ptr<ViewController> _from, _to;
    const bool _animated, _interactive;
    const std::shared_ptr<TransitionCoordinator> _coordinator;
    std::shared_ptr<NavigationBar> _bar;
    bool _barIsUpper = false, _held, _cancelling = false;
    double _progress = 0;
    Token _motion;
};

}  // namespace zornic
