#pragma once

#include <functional>

#include "Platform/Foundation/Task.h"

namespace zornic {

/** Easing from 0 to 1. */
double easeOut(double progress);
double linear(double progress);

/** Runs on the main loop's frames for `duration`: `step` with eased progress in (0, 1], the last time with
   exactly 1, then `completion(true)`. Destroying the token ends it where it is and calls `completion(false)`.
   Main thread. */
Token animate(Seconds duration, double (*easing)(double), std::function<void(double)> step,
              std::function<void(bool finished)> completion = {});

/** Frame changes inside the scope are meant to be seen at once. */
class WithoutAnimation {
public:
    template <class Changes>
    static void run(Changes&& changes) {
        changes();
    }
};

}  // namespace zornic
