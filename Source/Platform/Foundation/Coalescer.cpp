#include "Platform/Foundation/Coalescer.h"

namespace zornic {

void Coalescer::request() {
    if (std::exchange(*_pending, true)) return;
    mainQueue().async([weak = std::weak_ptr(_update), pending = _pending] {
        *pending = false;  // first, so that the update may ask for another
        if (const auto update = weak.lock()) (*update)();
    });
}

}  // namespace zornic
