#pragma once

#include "Platform/Toolkit/ViewController.h"

namespace zornic {

/** One screen laid over another, from its rise to its going: places its view in the window, moves it and
   tells both screens of their appearance. Whatever interrupts it finds both in a true state. Main thread. */
class Presentation : public Object {
public:
    Presentation(std::weak_ptr<ViewController> presenter, std::shared_ptr<ViewController> presented);

    /** None once the presenter is gone. */
    std::shared_ptr<ViewController> presenter() const { return _presenter.lock(); }
    /** By a number of `PresentationTransition`. `completion` runs when it is done. */
    void enter(int transition, Task completion);
    /** From how far it shows (1: wholly); `uncover`: what was covered appears again. */
    void leave(int transition, double from, bool uncover, Task completion);
    /** Ends a motion at once, where it was going. Returns how far it showed. */
    double finish();
    /** The presenter goes away: the presented one goes at once. */
    void abandon();

private:
    enum class State { New, Entering, Shown, Leaving, Gone };
    void placeView();
    void move(double to, bool animated);
    void showProgress(double progress);
    void showCovered(bool shown);
    bool coveredShouldAppear() const;

    const std::weak_ptr<ViewController> _presenter;
    /** Let go at the end. */
    std::shared_ptr<ViewController> _presented;
    /** The container that is wholly hidden by a full-screen presentation; none for others. */
    std::weak_ptr<ViewController> _covered;
    std::shared_ptr<TransitionCoordinator> _coordinator;
    State _state = State::New;
    bool _coveredWasOnView = false, _uncovers = false;
    double _progress = 0;
    Task _completion;
    Token _motion;
};

}  // namespace zornic
