#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Task.h"

namespace zornic {

/** The main thread's work: queued blocks, delayed calls, repeating timers and frames, driven by a clock that
   is handed to it. The host calls `runDue()` in its loop and `fireFrame()` at each display refresh while
   `wantsFrames()`. Everything but `async` belongs to the thread that made the loop. */
class RunLoop {
public:
    /** Makes the loop of this thread and, when there is none yet, the process's main loop. */
    explicit RunLoop(const Clock& clock);
    ~RunLoop();
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;

    /** The process's main loop. There must be one. */
    static RunLoop& main();
    /** Whether there is a main loop at the moment. */
    static bool hasMain();
    /** Whether the caller is on the main loop's thread; false without a main loop. Any thread. */
    static bool isMainThread();
    /** `async` on the main loop, safe while that loop is going away. Any thread. Returns false, with `task`
       destroyed unrun, when there is none. */
    static bool asyncOnMain(Task task);

    TimePoint now() const { return _clock.now(); }
    bool isCurrentThread() const { return std::this_thread::get_id() == _thread; }

    /** Runs `task` later, first in, first out, never inside the caller. Any thread. */
    void async(Task task);
    /** Runs `task` once, `delay` from now, unless the token is destroyed first. */
    Token after(Duration delay, Task task);
    /** Runs `task` at every multiple of `interval` from now, without drift (late calls are skipped, not
       bunched), until the token is destroyed. */
    Token every(Duration interval, Task task);
    /** Runs `task` with each frame's time until the token is destroyed. */
    Token onFrame(std::function<void(TimePoint)> task);

    /** Runs what is queued, then every timer that is due now, earliest first. It takes what is there when it
       begins: blocks and timers that these add wait for the next call, so that work that renews itself can't
       hold up frames. Returns whether anything ran. */
    bool runDue();
    /** When the next timer falls due; nullopt without one. Queued blocks count as due now. */
    std::optional<TimePoint> nextDue() const;
    bool wantsFrames() const;
    /** Runs the frame callbacks with the present time. */
    void fireFrame();

    /** Called, on the submitting thread, whenever `async` put something into an idle queue: the host wakes
       up. A call that is under way on another thread may still finish after it was replaced. Any thread. */
    void setWakeUp(Task wakeUp);

private:
    /** Due time, then order of scheduling. */
    using TimerKey = std::pair<TimePoint, std::uint64_t>;
    struct Timer {
        Task task;
        Duration interval{};  // zero: once
        TimePoint start{};
        TimerKey key{};
    };
    /** Shared with threads that hand blocks in while the loop goes away. */
    struct Inbox {
        bool add(Task task);

        std::mutex mutex;
        std::deque<Task> queued;
        std::uint64_t taken = 0;  // blocks taken out so far
        Task wakeUp;
        bool closed = false;
    };
    Token schedule(Duration delay, Timer timer);
    bool runQueued();
    bool runTimers();

    const Clock& _clock;
    const std::thread::id _thread = std::this_thread::get_id();
    const std::shared_ptr<Inbox> _inbox = std::make_shared<Inbox>();
    std::map<TimerKey, std::shared_ptr<Timer>> _timers;
    std::uint64_t _nextTimer = 0;
    std::vector<std::weak_ptr<std::function<void(TimePoint)>>> _frameTasks;
    /** Outlived by tokens: they look here before they touch the loop. */
    std::shared_ptr<bool> _alive = std::make_shared<bool>(true);
};

/** Delayed calls of named operations of one object, cancelled by operation: several calls of one operation
   may be pending. A member of its object, so that a dead object is never called. Main thread. */
class DelayedCalls {
public:
    DelayedCalls() = default;
    DelayedCalls(const DelayedCalls&) = delete;
    DelayedCalls& operator=(const DelayedCalls&) = delete;

    /** Runs `task` on the main loop, `delay` from now; it may destroy this object. */
    void perform(const char* operation, Duration delay, Task task);
    /** Cancels every pending call of `operation`. */
    void cancel(const char* operation);

private:
    std::multimap<std::string, Token> _pending;
};

}  // namespace zornic
