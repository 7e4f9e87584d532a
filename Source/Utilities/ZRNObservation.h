#pragma once

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Object.h"

namespace zornic {

/** Observes what may be posted on any thread, for an `observer` that is held weakly and whose `handler` runs
   on the posting thread. An observer whose owners let go of it meanwhile ends on the main thread all the
   same. `sender` none: from any sender. */
template <class T>
Observation ZRNObserveFromAnyThread(std::string name, const Object* sender, T* observer,
                                    void (T::*handler)(const Notification&)) {
    return NotificationCenter::defaultCenter().observe(
        std::move(name), sender, [weakObserver = weak(observer), handler](const Notification& notification) {
            auto living = weakObserver.lock();
            if (!living) return;
            (living.get()->*handler)(notification);
            mainQueue().async([last = std::move(living)] {});
        });
}

}  // namespace zornic
