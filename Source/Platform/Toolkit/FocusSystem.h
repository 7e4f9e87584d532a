#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "Platform/Toolkit/FocusContainer.h"
#include "Platform/Toolkit/View.h"

namespace zornic {

class ViewController;

/** The knob's focus in one window: exactly one focusable view of the front screen while the car has a knob,
   none otherwise. Items are ordered as they are read, lists take part as a whole. Main thread. */
class FocusSystem {
public:
    explicit FocusSystem(Window& window) : _window(window) {}

    bool isEnabled() const { return _enabled; }
    /** Turning it off takes the focus away. */
    void setEnabled(bool enabled);
    std::shared_ptr<View> focusedItem() const { return _focused.lock(); }
    void focus(const std::shared_ptr<View>& view);
    /** Moves by so many detents, one stop at a time, so that a fast spin cannot jump an edge. */
    void turn(int detents);
    void pressBegan();
    void pressEnded(bool cancelled);
    /** Keeps a focus that is still on view in the front screen, else finds one: in the list that had it, else
       where the front screen had it last, else by the front screen's preference, else the first item. */
    void update();
    /** Finds the focus anew by the front screen's preference. */
    void reset();
    /** Another screen stands in front: the focus returns to where it had it last, else goes by its
     * preference. */
    void frontScreenDidChange();

private:
    /** Focusable views and lists of the front screen in reading order. */
    std::vector<std::shared_ptr<View>> stops() const;
    bool step(int direction);
    /** The nearest item from stop `from` (exclusive) on; none at the end. */
    std::shared_ptr<View> itemBeyond(const View& from, int direction) const;
    /** What gets the focus when it is to go to `target`, which may be a list or hold the item; none when
     * nothing can. */
    std::shared_ptr<View> itemIn(const std::shared_ptr<View>& target, int direction) const;
    std::shared_ptr<View> rememberedItem() const;
    std::shared_ptr<View> preferredItem() const;
    std::shared_ptr<View> firstItem() const;
    bool isUsable(const std::shared_ptr<View>& item) const;
    bool isShown(const View& view) const;
    std::shared_ptr<ViewController> frontController() const;
    /** Keeps where the front screen has the focus. */
    void remember();
    void moveTo(const std::shared_ptr<View>& item);

    Window& _window;
    bool _enabled = false, _updating = false;
    std::weak_ptr<View> _focused, _pressed;
    /** The list that the focused item belongs to, even when that item has left it. */
    std::weak_ptr<View> _container;
    /** By a screen's view: the stop that had the focus. */
    std::vector<std::pair<std::weak_ptr<View>, std::weak_ptr<View>>> _memory;
};

}  // namespace zornic
