#pragma once

#include <memory>

namespace zornic {

class View;

/** A view whose focusable items come and go while the knob turns: a list. Main thread. */
class FocusContainer {
public:
    virtual ~FocusContainer() = default;
    /** The item that gets focus when it comes in, turning by `direction` (0: by preference): the one that had
       it last, if it is still there. None when the container is empty. */
    virtual std::shared_ptr<View> focusItemOnEntry(int direction) = 0;
    /** The item after (+1) or before (-1) the focused one, brought on screen; none at the ends. */
    virtual std::shared_ptr<View> focusItemNextTo(View& focused, int direction) = 0;
    /** Whether focus may go from one of its items to `next`, which may be inside or outside. */
    virtual bool shouldChangeFocus(View& focused, const std::shared_ptr<View>& next) = 0;
    /** After a reload: the item in the place of the focused one; none when the container is empty. */
    virtual std::shared_ptr<View> focusItemAfterReload() = 0;
};

}  // namespace zornic
