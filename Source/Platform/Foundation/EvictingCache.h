#pragma once

#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <unordered_map>

namespace zornic {

/** A cache that drops what was used longest ago when its cost passes a limit. A miss is nullopt. Thread-safe.
 */
template <class Key, class T, class Hash = std::hash<Key>>
class EvictingCache {
public:
    /** `limit`: sum of costs that is kept; the unit is the caller's (entries, bytes). */
    explicit EvictingCache(std::size_t limit) : _limit(limit) {}

    std::optional<T> get(const Key& key) {
        std::lock_guard lock(_mutex);
        const auto found = _index.find(key);
        if (found == _index.end()) return std::nullopt;
        _entries.splice(_entries.begin(), _entries, found->second);
        return found->second->value;
    }
    void set(const Key& key, T value, std::size_t cost = 1) {
        std::lock_guard lock(_mutex);
        removeLocked(key);
        _entries.push_front({key, std::move(value), cost});
        _index[key] = _entries.begin();
        _cost += cost;
        while (_cost > _limit && !_entries.empty()) removeLocked(Key(_entries.back().key));
    }
    void remove(const Key& key) {
        std::lock_guard lock(_mutex);
        removeLocked(key);
    }
    void removeAll() {
        std::lock_guard lock(_mutex);
        _entries.clear();
        _index.clear();
        _cost = 0;
    }
    std::size_t count() const {
        std::lock_guard lock(_mutex);
        return _index.size();
    }

private:
    struct Entry {
        Key key;
        T value;
        std::size_t cost;
    };
    void removeLocked(const Key& key) {
        const auto found = _index.find(key);
        if (found == _index.end()) return;
        _cost -= found->second->cost;
        _entries.erase(found->second);
        _index.erase(found);
    }

    const std::size_t _limit;
    mutable std::mutex _mutex;
    std::list<Entry> _entries;
    std::unordered_map<Key, typename std::list<Entry>::iterator, Hash> _index;
    std::size_t _cost = 0;
};

}  // namespace zornic
