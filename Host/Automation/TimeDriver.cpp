#include "Host/Automation/TimeDriver.h"

#include <algorithm>
#include <thread>

#include "Platform/Foundation/DispatchQueue.h"

namespace helmo {

using namespace zornic;

namespace {

/** Real time after which background work that does not end is no longer waited for. */
constexpr Duration backgroundLimit = std::chrono::seconds(120);

}  // namespace

void TimeDriver::runWork() {
    auto& loop = _target.runLoop();
    const auto isDue = [&] { return loop.nextDue() && *loop.nextDue() <= loop.now(); };
    for (;;) {
        while (isDue()) loop.runDue();
        // In this order: work that ends in between has queued its result before it counted as ended.
        if (BackgroundWork::isIdle() && !isDue()) return;
        BackgroundWork::waitUntilIdle(backgroundLimit);
        if (!isDue()) return;
    }
}

void TimeDriver::settle() {
    runWork();
    _target.drawFrame();
    // Drawing asks for pictures, and pictures that arrive are drawn.
    runWork();
    _target.drawFrame();
}

void TimeDriver::advance(Seconds time) {
    settle();
    const TimePoint end = _target.runLoop().now() + toDuration(time);
    if (auto* clock = _target.virtualClock())
        advanceVirtually(*clock, end);
    else
        advanceReally(end);
    settle();
}

void TimeDriver::advanceVirtually(ManualClock& clock, TimePoint end) {
    auto& loop = _target.runLoop();
    TimePoint frame = clock.now() + toDuration(frameInterval);
    while (clock.now() < end) {
        const auto due = loop.nextDue();
        TimePoint next = end;
        if (due) next = std::min(next, *due);
        const bool moving = loop.wantsFrames();
        if (!moving) frame = std::max(frame, clock.now() + toDuration(frameInterval));
        if (moving) next = std::min(next, frame);
        clock.moveTo(std::max(next, clock.now()));
        runWork();
        if (moving && clock.now() >= frame) {
            loop.fireFrame();
            frame = clock.now() + toDuration(frameInterval);
            runWork();
        }
        _target.drawFrame();
    }
}

void TimeDriver::advanceReally(TimePoint end) {
    auto& loop = _target.runLoop();
    while (loop.now() < end) {
        loop.runDue();
        if (loop.wantsFrames()) loop.fireFrame();
        _target.drawFrame();
        const auto due = loop.nextDue().value_or(end);
        const TimePoint wake = std::min({end, due, loop.now() + toDuration(frameInterval)});
        std::this_thread::sleep_for(std::max(wake - loop.now(), Duration::zero()));
    }
}

}  // namespace helmo
