#pragma once

#include <functional>
#include <vector>

#include "Platform/Foundation/Object.h"

namespace zornic {

/** A transition under way, as the screens that take part in it see it. Main thread. */
class TransitionCoordinator : public Object {
public:
    struct Context {
        bool cancelled = false;
    };
    explicit TransitionCoordinator(bool initiallyInteractive) : _initiallyInteractive(initiallyInteractive) {}
    /** Whether a finger began it. */
    bool initiallyInteractive() const { return _initiallyInteractive; }
    /** Runs once the finger lets go and it is decided how the transition ends. */
    void notifyWhenInteractionEnds(std::function<void(const Context&)> block) {
        _blocks.push_back(std::move(block));
    }
    /** The container decides; calls the blocks, once. */
    void interactionEnded(bool cancelled);

private:
    const bool _initiallyInteractive;
    std::vector<std::function<void(const Context&)>> _blocks;
};

}  // namespace zornic
