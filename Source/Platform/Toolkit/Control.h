#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Platform/Toolkit/View.h"

namespace zornic {

/** Moments of a press, as a bit set. */
namespace ControlEvent {
inline constexpr unsigned TouchDown = 1, TouchUpInside = 64, TouchUpOutside = 128, TouchCancel = 256;
}

/** A view that is pressed and tells its targets, which it holds weakly. A knob's press is a touch down and a
   touch up inside. A disabled control tells nothing. Main thread. */
class Control : public View {
public:
    using Action = std::function<void(const std::shared_ptr<Control>& sender)>;
    using View::View;

    /** `action` runs for each of `events` as long as `target` lives. */
    void addTarget(const std::shared_ptr<Object>& target, Action action, unsigned events);
    /** The same for an operation of the target: with no argument or with the sender. */
    template <class Target>
    void addTarget(Target* target, void (Target::*operation)(), unsigned events) {
        addTarget(
            strong<Object>(target), [target, operation](const auto&) { (target->*operation)(); }, events);
    }
    template <class Target>
    void addTarget(Target* target, void (Target::*operation)(const std::shared_ptr<Control>&),
                   unsigned events) {
        addTarget(
            strong<Object>(target), [target, operation](const auto& s) { (target->*operation)(s); }, events);
    }
    void removeAllTargets();
    void sendActions(unsigned event);

    bool isEnabled() const { return _enabled; }
    virtual void setEnabled(bool enabled);
    bool isSelected() const { return _selected; }
    virtual void setSelected(bool selected);
    bool isHighlighted() const { return _highlighted; }
    virtual void setHighlighted(bool highlighted);

    bool canBecomeFocused() const override { return _enabled; }
    void touchBegan(const Touch& touch) override;
    void touchMoved(const Touch& touch) override;
    void touchEnded(const Touch& touch) override;
    void touchCancelled(const Touch& touch) override;
    void knobPressBegan() override;
    void knobPressEnded(bool cancelled) override;
    /** At least 44 points each way: small controls can be hit around their bounds. */
    bool pointInside(Point point) const override;
    /** A press ends, cancelled, when the control leaves its window. Overrides call their base. */
    void didMoveToWindow() override;

private:
    bool isInside(const Touch& touch) const;
    Rect hitArea() const;
    void endPress(unsigned event);
    struct Target {
        std::weak_ptr<Object> target;
        Action action;
        unsigned events;
    };
    std::vector<Target> _targets;
    bool _enabled = true, _selected = false, _highlighted = false, _tracking = false;
};

}  // namespace zornic
