#include "Platform/Foundation/RunLoop.h"

#include <algorithm>
#include <cassert>

namespace zornic {

namespace {

std::mutex mainMutex;
RunLoop* mainLoop = nullptr;

/** `delay` after `time`, at the end of time rather than beyond it. */
TimePoint later(TimePoint time, Duration delay) {
    const auto wait = std::max(delay, Duration::zero());
    if (time.time_since_epoch() > Duration::zero() && wait > TimePoint::max() - time) return TimePoint::max();
    return time + wait;
}

}  // namespace

RunLoop::RunLoop(const Clock& clock) : _clock(clock) {
    std::lock_guard lock(mainMutex);
    if (!mainLoop) mainLoop = this;
}

RunLoop::~RunLoop() {
    assert(isCurrentThread());
    *_alive = false;
    {
        std::lock_guard lock(mainMutex);
        if (mainLoop == this) mainLoop = nullptr;
    }
    std::deque<Task> queued;
    {
        std::lock_guard lock(_inbox->mutex);
        _inbox->closed = true;
        _inbox->wakeUp = nullptr;
        queued.swap(_inbox->queued);
    }
    // What the captures' destructors do must still find whole containers.
    queued.clear();
    std::exchange(_timers, {}).clear();
}

RunLoop& RunLoop::main() {
    std::lock_guard lock(mainMutex);
    assert(mainLoop);
    return *mainLoop;
}

bool RunLoop::hasMain() {
    std::lock_guard lock(mainMutex);
    return mainLoop != nullptr;
}

bool RunLoop::isMainThread() {
    std::lock_guard lock(mainMutex);
    return mainLoop && mainLoop->isCurrentThread();
}

bool RunLoop::asyncOnMain(Task task) {
    std::shared_ptr<Inbox> inbox;
    {
        std::lock_guard lock(mainMutex);
        if (mainLoop) inbox = mainLoop->_inbox;
    }
    return inbox && inbox->add(std::move(task));
}

bool RunLoop::Inbox::add(Task task) {
    assert(task);
    Task wake;
    {
        std::lock_guard lock(mutex);
        if (closed) return false;
        if (queued.empty()) wake = wakeUp;
        queued.push_back(std::move(task));
    }
    // Without the lock: waking up may take locks of the window system, whose holders queue blocks here.
    if (wake) wake();
    return true;
}

void RunLoop::async(Task task) { _inbox->add(std::move(task)); }

Token RunLoop::after(Duration delay, Task task) {
    return schedule(delay, {.task = std::move(task), .interval = {}, .start = {}, .key = {}});
}

Token RunLoop::every(Duration interval, Task task) {
    assert(interval > Duration::zero());
    const auto step = std::max(interval, Duration(1));
    return schedule(step, {.task = std::move(task), .interval = step, .start = now(), .key = {}});
}

Token RunLoop::schedule(Duration delay, Timer timer) {
    assert(isCurrentThread());
    assert(timer.task);
    timer.key = {later(now(), delay), _nextTimer++};
    const auto kept = std::make_shared<Timer>(std::move(timer));
    _timers.emplace(kept->key, kept);
    return Token([this, alive = _alive, weak = std::weak_ptr(kept)] {
        if (!*alive) return;
        const auto ended = weak.lock();
        if (!ended) return;
        assert(isCurrentThread());
        _timers.erase(ended->key);
    });
}

Token RunLoop::onFrame(std::function<void(TimePoint)> task) {
    assert(isCurrentThread());
    assert(task);
    std::erase_if(_frameTasks, [](const auto& weak) { return weak.expired(); });
    const auto kept = std::make_shared<std::function<void(TimePoint)>>(std::move(task));
    _frameTasks.push_back(kept);
    return Token([kept] {});
}

bool RunLoop::runDue() {
    assert(isCurrentThread());
    const bool ranQueued = runQueued();
    const bool ranTimers = runTimers();
    return ranQueued || ranTimers;
}

bool RunLoop::runQueued() {
    std::unique_lock lock(_inbox->mutex);
    const bool any = !_inbox->queued.empty();
    const auto end = _inbox->taken + _inbox->queued.size();
    // One at a time from the shared queue, so that a loop run inside a block goes on in order.
    while (_inbox->taken < end) {
        Task task = std::move(_inbox->queued.front());
        _inbox->queued.pop_front();
        ++_inbox->taken;
        lock.unlock();
        std::exchange(task, nullptr)();
        lock.lock();
    }
    return any;
}

bool RunLoop::runTimers() {
    const auto time = now();
    std::vector<TimerKey> due;
    for (auto timer = _timers.begin(); timer != _timers.end() && timer->first.first <= time; ++timer)
        due.push_back(timer->first);
    bool any = false;
    for (const auto& key : due) {
        auto node = _timers.extract(key);
        if (node.empty()) continue;  // ended by an earlier one
        const auto timer = node.mapped();
        if (timer->interval > Duration::zero()) {
            const auto sinceTick = (time - timer->start) % timer->interval;
            timer->key.first = later(time, timer->interval - sinceTick);
            node.key() = timer->key;
            _timers.insert(std::move(node));
        }
        timer->task();
        any = true;
    }
    return any;
}

std::optional<TimePoint> RunLoop::nextDue() const {
    assert(isCurrentThread());
    {
        std::lock_guard lock(_inbox->mutex);
        if (!_inbox->queued.empty()) return now();
    }
    if (_timers.empty()) return std::nullopt;
    return _timers.begin()->first.first;
}

bool RunLoop::wantsFrames() const {
    assert(isCurrentThread());
    return std::ranges::any_of(_frameTasks, [](const auto& weak) { return !weak.expired(); });
}

void RunLoop::fireFrame() {
    assert(isCurrentThread());
    std::erase_if(_frameTasks, [](const auto& weak) { return weak.expired(); });
    const auto time = now();
    for (const auto& weak : std::vector(_frameTasks))
        if (const auto task = weak.lock()) (*task)(time);
}

void RunLoop::setWakeUp(Task wakeUp) {
    std::lock_guard lock(_inbox->mutex);
    _inbox->wakeUp.swap(wakeUp);
}

void DelayedCalls::perform(const char* operation, Duration delay, Task task) {
    const auto entry = _pending.emplace(operation, Token());
    entry->second = RunLoop::main().after(delay, [this, entry, task = std::move(task)] {
        _pending.erase(entry);
        task();  // may destroy this object
    });
}

void DelayedCalls::cancel(const char* operation) {
    // Ended last: what a call has captured may lead back here when it goes.
    std::vector<Token> ended;
    const auto [first, last] = _pending.equal_range(operation);
    for (auto entry = first; entry != last; ++entry) ended.push_back(std::move(entry->second));
    _pending.erase(first, last);
}

}  // namespace zornic
