#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "Platform/Foundation/Task.h"

namespace zornic {

/** The threads behind a queue. They start when there is work for them, up to a limit, and take tasks in
   order. Each task counts as background work until it and its captures are destroyed. Any thread. */
class WorkerPool {
public:
    explicit WorkerPool(std::size_t limit);
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;
    ~WorkerPool() { finish(); }

    void async(Task task);
    /** Runs what is queued, then joins. On one of its own threads, which can't wait for itself, it lets them
       go: they end when nothing is left. From then on only tasks of the pool may add tasks. */
    void finish();
    bool isCurrent() const;

private:
    struct Job {
        Token work;  // declared first: ends after the task's captures
        Task task;
    };
    /** Shared with the threads, which may outlive the pool. */
    struct State {
        std::mutex mutex;
        std::condition_variable ready;
        std::deque<Job> jobs;
        std::size_t idle = 0;
        bool closing = false;
    };
    static void run(const std::shared_ptr<State>& state);

    static thread_local const State* _current;
    const std::size_t _limit;
    const std::shared_ptr<State> _state = std::make_shared<State>();
    std::vector<std::thread> _threads;
};

}  // namespace zornic
