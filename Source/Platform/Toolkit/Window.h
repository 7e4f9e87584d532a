#pragma once

#include <functional>

#include "Platform/Toolkit/DamageRegion.h"
#include "Platform/Toolkit/FocusSystem.h"
#include "Platform/Toolkit/Screen.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

class WindowTouches;

/** What a display shows: a root screen and what is presented over it. Takes the driver's touches, knob and
   back button and tells what must be drawn. Main thread. */
class Window : public View {
public:
    explicit Window(const Rect& frame);
    void didMake() override;
    ~Window() override;

    /** The visible window of a screen; none while there is none. */
    static std::shared_ptr<Window> onScreen(const Screen& screen);

    std::shared_ptr<Screen> screen() const { return _screen; }
    /** None detaches it. */
    void setScreen(std::shared_ptr<Screen> screen);
    /** Windows begin hidden; a root screen appears once its window is visible. */
    void setWindowHidden(bool hidden);
    bool isWindowHidden() const { return isHidden(); }
    std::shared_ptr<ViewController> rootViewController() const { return _root; }
    void setRootViewController(std::shared_ptr<ViewController> controller);
    /** The controller presented last, or the root. */
    std::shared_ptr<ViewController> topPresentedViewController() const;
    FocusSystem& focusSystem() { return _focus; }
    std::shared_ptr<View> firstResponder() const { return _firstResponder.lock(); }
    void setFirstResponder(const std::shared_ptr<View>& view) { _firstResponder = view; }

    // The driver. Times are the main loop's.
    void touchDown(Point location);
    void touchMove(Point location);
    void touchUp(Point location);
    void touchCancel();
    bool hasTouch() const;
    void turnKnob(int detents);
    void pressKnob(bool down);
    /** The car's back button; false when nothing was left to go back from. */
    bool pressBack();
    /** The car says anew what it can do (mode, size): layout, images and focus follow. */
    void screenDidChange();

    // Drawing
    /** Lays out, then says what must be drawn; empty: nothing changed. */
    std::vector<Rect> takeDamage();
    /** Draws everything within the canvas's clip. */
    void render(Canvas& canvas);
    void addDamage(const Rect& area);
    /** A frame is wanted: something is damaged or wants layout. */
    bool needsFrame() const { return !_damage.empty() || _layoutWanted; }
    void setLayoutWanted();
    /** Called once when a frame becomes wanted: the host schedules one. */
    std::function<void()> onFrameWanted;

    /** Where presented screens' views are put, above the root's. */
    void addPresentedView(const std::shared_ptr<View>& view);

private:
    bool isShown() const { return _screen && !isHidden(); }
    void updateAppearance(bool wasShown);
    /** The root and what is presented over it, the front-most last; without what is on its way out. */
    std::vector<std::shared_ptr<ViewController>> controllers() const;
    void wantFrame();
    bool focusSelectedTab();
    Touch touchAt(Point location) const;

    std::shared_ptr<Screen> _screen;
    std::shared_ptr<ViewController> _root;
    DamageRegion _damage;
    FocusSystem _focus{*this};
    std::weak_ptr<View> _firstResponder;
    std::unique_ptr<WindowTouches> _touches;
    bool _layoutWanted = false, _frameAnnounced = false;
};

}  // namespace zornic
