#include "Platform/Foundation/WorkerPool.h"

#include <cassert>

#include "Platform/Foundation/DispatchQueue.h"

namespace zornic {

thread_local const WorkerPool::State* WorkerPool::_current = nullptr;

WorkerPool::WorkerPool(std::size_t limit) : _limit(limit) {}

void WorkerPool::finish() {
    std::vector<std::thread> threads;
    {
        std::lock_guard lock(_state->mutex);
        _state->closing = true;
        _state->ready.notify_all();
        threads.swap(_threads);
    }
    for (auto& thread : threads) {
        if (isCurrent())
            thread.detach();
        else
            thread.join();
    }
}

void WorkerPool::async(Task task) {
    assert(task);
    Job job{BackgroundWork::begin(), std::move(task)};
    std::lock_guard lock(_state->mutex);
    _state->jobs.push_back(std::move(job));
    // A closing pool is fed by its own tasks only, whose thread comes back for more.
    if (!_state->closing && _state->jobs.size() > _state->idle && _threads.size() < _limit) {
        ++_state->idle;
        _threads.emplace_back([state = _state] { run(state); });
    }
    _state->ready.notify_one();
}

bool WorkerPool::isCurrent() const { return _current == _state.get(); }

void WorkerPool::run(const std::shared_ptr<State>& state) {
    _current = state.get();
    std::unique_lock lock(state->mutex);
    for (;;) {
        state->ready.wait(lock, [&] { return !state->jobs.empty() || state->closing; });
        if (state->jobs.empty()) return;
        --state->idle;
        {
            Job job = std::move(state->jobs.front());
            state->jobs.pop_front();
            lock.unlock();
            job.task();
        }
        lock.lock();
        ++state->idle;
    }
}

}  // namespace zornic
