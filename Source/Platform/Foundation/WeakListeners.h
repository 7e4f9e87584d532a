#pragma once

#include <memory>
#include <vector>

namespace zornic {

/** Listeners held weakly. Safe when a listener is added, or destroyed, by a callback; one that is added
   meanwhile is first called the next time. One thread. */
template <class Listener>
class WeakListeners {
public:
    void add(const std::shared_ptr<Listener>& listener) { _listeners.push_back(listener); }
    void remove(const Listener* listener) {
        std::erase_if(_listeners, [&](const auto& weak) { return weak.lock().get() == listener; });
    }
    template <class Call>
    void notify(Call&& call) {
        std::erase_if(_listeners, [](const auto& weak) { return weak.expired(); });
        for (const auto& weak : std::vector(_listeners))
            if (const auto listener = weak.lock()) call(*listener);
    }

private:
    std::vector<std::weak_ptr<Listener>> _listeners;
};

}  // namespace zornic
