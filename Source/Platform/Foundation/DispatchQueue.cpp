#include "Platform/Foundation/DispatchQueue.h"

#include <algorithm>
#include <cassert>
#include <future>
#include <thread>

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Foundation/WorkerPool.h"

namespace zornic {

namespace {

/** A block that somebody waits for; a block that is dropped frees the waiting thread as well. */
struct AwaitedTask {
    explicit AwaitedTask(Task awaited) : task(std::move(awaited)) {}
    AwaitedTask(const AwaitedTask&) = delete;
    AwaitedTask& operator=(const AwaitedTask&) = delete;
    ~AwaitedTask() {
        task = nullptr;
        done.set_value();
    }

    Task task;
    std::promise<void> done;
};

class MainQueue final : public DispatchQueue {
public:
    void async(Task task) override { RunLoop::asyncOnMain(std::move(task)); }
    bool isCurrent() const override { return RunLoop::isMainThread(); }
};

/** Enough threads that blocks which wait for one another don't stop a whole queue. */
std::size_t concurrentThreads() { return std::clamp(std::thread::hardware_concurrency(), 4U, 8U); }

struct WorkCount {
    std::mutex mutex;
    std::condition_variable idle;
    std::size_t count = 0;
};

/** Never destroyed: threads that were let go may still count when the process ends. */
WorkCount& workCount() {
    static auto& count = *new WorkCount;
    return count;
}

}  // namespace

void DispatchQueue::sync(Task task) {
    assert(task);
    assert(!isCurrent());
    auto awaited = std::make_shared<AwaitedTask>(std::move(task));
    const auto done = awaited->done.get_future();
    async([awaited = std::move(awaited)] { awaited->task(); });
    done.wait();
}

DispatchQueue& mainQueue() {
    static auto& queue = *new MainQueue;
    return queue;
}

DispatchQueue& globalQueue(QueuePriority priority) {
    static auto& background = *new ConcurrentQueue("background", QueuePriority::Background);
    static auto& normal = *new ConcurrentQueue("default", QueuePriority::Default);
    static auto& highest = *new ConcurrentQueue("highest", QueuePriority::Highest);
    switch (priority) {
        case QueuePriority::Background:
            return background;
        case QueuePriority::Highest:
            return highest;
        case QueuePriority::Default:
            break;
    }
    return normal;
}

SerialQueue::SerialQueue(std::string label, QueuePriority priority)
    : _label(std::move(label)), _priority(priority), _workers(std::make_unique<WorkerPool>(1)) {}

SerialQueue::~SerialQueue() { _workers->finish(); }

void SerialQueue::async(Task task) { _workers->async(std::move(task)); }

bool SerialQueue::isCurrent() const { return _workers->isCurrent(); }

ConcurrentQueue::ConcurrentQueue(std::string label, QueuePriority priority)
    : _label(std::move(label)),
      _priority(priority),
      _workers(std::make_unique<WorkerPool>(concurrentThreads())) {}

ConcurrentQueue::~ConcurrentQueue() { _workers->finish(); }

void ConcurrentQueue::async(Task task) { _workers->async(std::move(task)); }

bool ConcurrentQueue::isCurrent() const { return _workers->isCurrent(); }

bool BackgroundWork::isIdle() {
    auto& work = workCount();
    std::lock_guard lock(work.mutex);
    return work.count == 0;
}

bool BackgroundWork::waitUntilIdle(Duration limit) {
    auto& work = workCount();
    std::unique_lock lock(work.mutex);
    const auto isIdle = [&] { return work.count == 0; };
    return work.idle.wait_for(lock, std::min<Duration>(limit, std::chrono::hours(24)), isIdle);
}

Token BackgroundWork::begin() {
    auto& work = workCount();
    {
        std::lock_guard lock(work.mutex);
        ++work.count;
    }
    return Token([&work] {
        std::lock_guard lock(work.mutex);
        if (--work.count == 0) work.idle.notify_all();
    });
}

void DispatchGroup::enter() {
    std::lock_guard lock(_mutex);
    ++_entered;
}

void DispatchGroup::leave() {
    std::vector<std::pair<DispatchQueue*, Task>> waiting;
    {
        std::lock_guard lock(_mutex);
        assert(_entered > 0);
        if (_entered == 0 || --_entered > 0) return;
        waiting.swap(_waiting);
        // Under the lock: whoever waits may destroy the group as soon as it is free.
        _empty.notify_all();
    }
    for (auto& [queue, task] : waiting) queue->async(std::move(task));
}

void DispatchGroup::wait() {
    std::unique_lock lock(_mutex);
    _empty.wait(lock, [this] { return _entered == 0; });
}

void DispatchGroup::notify(DispatchQueue& queue, Task task) {
    {
        std::lock_guard lock(_mutex);
        if (_entered > 0) {
            _waiting.emplace_back(&queue, std::move(task));
            return;
        }
    }
    queue.async(std::move(task));
}

void Semaphore::signal() {
    std::lock_guard lock(_mutex);
    ++_value;
    _changed.notify_one();
}

void Semaphore::wait() {
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [this] { return _value > 0; });
    --_value;
}

}  // namespace zornic
