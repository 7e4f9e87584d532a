#include "Platform/Toolkit/TransitionCoordinator.h"

#include <utility>

namespace zornic {

void TransitionCoordinator::interactionEnded(bool cancelled) {
    const auto self = strong(this);
    for (const auto& block : std::exchange(_blocks, {})) block({cancelled});
}

}  // namespace zornic
