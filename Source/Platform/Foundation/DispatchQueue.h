#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Foundation/Task.h"

namespace zornic {

/** Where blocks run. A block owns its captures until it has run and is destroyed on the queue's thread. */
class DispatchQueue {
public:
    virtual ~DispatchQueue() = default;
    /** Runs `task` later on this queue. Any thread. */
    virtual void async(Task task) = 0;
    /** Runs `task` on this queue and waits until it and its captures are gone: run, or dropped with a main
       loop that ended. Not from the queue itself. */
    virtual void sync(Task task);
    /** Whether the calling thread is running one of this queue's blocks. */
    virtual bool isCurrent() const = 0;
};

/** The main run loop's queue: first in, first out, never inline. Current on the whole main thread. Without a
   main loop blocks are destroyed unrun, on the submitting thread. */
DispatchQueue& mainQueue();

enum class QueuePriority { Background, Default, Highest };

/** The process's shared concurrent queues, one a priority. They live until the process ends. */
DispatchQueue& globalQueue(QueuePriority priority);

class WorkerPool;

/** One thread, first in, first out. Destruction runs what is queued, then joins; from one of its own blocks
   it doesn't wait: the thread finishes the rest by itself. */
class SerialQueue final : public DispatchQueue {
public:
    explicit SerialQueue(std::string label, QueuePriority priority = QueuePriority::Default);
    ~SerialQueue() override;
    void async(Task task) override;
    bool isCurrent() const override;
    const std::string& label() const { return _label; }
    /** A label as well: every queue has threads of its own, so no priority keeps another from running. */
    QueuePriority priority() const { return _priority; }

private:
    const std::string _label;
    const QueuePriority _priority;
    const std::unique_ptr<WorkerPool> _workers;
};

/** Several threads (at least four): tasks start in order and run side by side. Destruction as with a serial
 * queue. */
class ConcurrentQueue final : public DispatchQueue {
public:
    explicit ConcurrentQueue(std::string label, QueuePriority priority = QueuePriority::Default);
    ~ConcurrentQueue() override;
    void async(Task task) override;
    bool isCurrent() const override;
    const std::string& label() const { return _label; }
    /** A label as well: every queue has threads of its own, so no priority keeps another from running. */
    QueuePriority priority() const { return _priority; }

private:
    const std::string _label;
    const QueuePriority _priority;
    const std::unique_ptr<WorkerPool> _workers;
};

/** All blocks that are queued or running on the serial and concurrent queues of this process: lets a host
   that owns the clock wait until what was started in the background is finished. */
class BackgroundWork {
public:
    static bool isIdle();
    /** Waits until idle or `limit` has passed (real time). Returns whether it is idle. Main thread. */
    static bool waitUntilIdle(Duration limit);
    /** Counts something that runs elsewhere (another library's thread) as work while the token lives. Any
     * thread. */
    static Token begin();
};

/** Joins several pieces of work. Thread-safe. */
class DispatchGroup {
public:
    void enter();
    void leave();
    /** Waits without limit until every `enter` has had its `leave`. */
    void wait();
    /** Queues `task` once every `enter` has had its `leave`; at once when nothing was entered. */
    void notify(DispatchQueue& queue, Task task);

private:
    std::mutex _mutex;
    std::condition_variable _empty;
    std::size_t _entered = 0;
    std::vector<std::pair<DispatchQueue*, Task>> _waiting;
};

/** Counting semaphore. Thread-safe. */
class Semaphore {
public:
    explicit Semaphore(long value = 0) : _value(value) {}
    void signal();
    void wait();

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    long _value;
};

}  // namespace zornic
