#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace zornic {

/** Weak keys by identity, strong values: an entry vanishes with its key. One thread. */
template <class Key, class T>
class WeakKeyMap {
public:
    void set(const std::shared_ptr<Key>& key, T value) {
        prune();
        _entries.insert_or_assign(std::weak_ptr<Key>(key), std::move(value));
    }
    /** The value for `key`; a default-made one when there is none. */
    T get(const std::shared_ptr<Key>& key) const {
        const auto found = _entries.find(key);
        return found == _entries.end() ? T() : found->second;
    }
    void remove(const std::shared_ptr<Key>& key) { _entries.erase(key); }
    std::size_t count() const {
        return static_cast<std::size_t>(
            std::ranges::count_if(_entries, [](const auto& entry) { return !entry.first.expired(); }));
    }

private:
    void prune() {
        std::erase_if(_entries, [](const auto& entry) { return entry.first.expired(); });
    }
    std::map<std::weak_ptr<Key>, T, std::owner_less<std::weak_ptr<Key>>> _entries;
};

/** Strong keys by value, weak values: a dead value reads as none. Any thread. */
template <class Key, class T>
class WeakValueMapTable {
public:
    void set(const Key& key, const std::shared_ptr<T>& value) {
        std::lock_guard lock(_mutex);
        _entries[key] = value;
    }
    std::shared_ptr<T> get(const Key& key) const {
        std::lock_guard lock(_mutex);
        const auto found = _entries.find(key);
        return found == _entries.end() ? nullptr : found->second.lock();
    }
    void remove(const Key& key) {
        std::lock_guard lock(_mutex);
        _entries.erase(key);
    }
    /** Keys whose values live. */
    std::vector<Key> keys() const {
        std::lock_guard lock(_mutex);
        std::vector<Key> keys;
        for (const auto& [key, value] : _entries)
            if (!value.expired()) keys.push_back(key);
        return keys;
    }
    std::size_t count() const { return keys().size(); }

private:
    mutable std::mutex _mutex;
    std::map<Key, std::weak_ptr<T>> _entries;
};

}  // namespace zornic
