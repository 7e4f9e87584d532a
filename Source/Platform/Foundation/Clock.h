#pragma once

#include "Platform/Foundation/Task.h"

namespace zornic {

/** Monotonic time, handed to everything that waits, so that no test sleeps. */
class Clock {
public:
    virtual ~Clock() = default;
    virtual TimePoint now() const = 0;
};

/** The machine's own monotonic clock: the one place that reads it. Any thread. */
class SystemClock final : public Clock {
public:
    TimePoint now() const override { return std::chrono::steady_clock::now(); }
};

/** A clock that moves only when told to. One thread. */
class ManualClock final : public Clock {
public:
    TimePoint now() const override { return _now; }
    void advance(Duration by) { _now += by; }
    void moveTo(TimePoint time) { _now = time; }

private:
    TimePoint _now{};
};

}  // namespace zornic
