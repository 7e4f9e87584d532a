#pragma once

#include <atomic>
#include <cstdint>

#include "Platform/Foundation/NotificationCenter.h"

namespace zornic {

/** Posted by the store client's network observer, as sender, on any thread, when the network is another. */
inline constexpr const char* StoreClientNetworkTypeDidChangeNotification =
    "StoreClientNetworkTypeDidChangeNotification";

/** Knows over which network the store client reaches its store; the host tells it. Any thread. */
class StoreClientNetworkObserver : public Object {
public:
    static const std::shared_ptr<StoreClientNetworkObserver>& shared() {
        static const auto observer = make<StoreClientNetworkObserver>();
        return observer;
    }
    /** 0: no network. */
    std::int64_t networkType() const { return _networkType; }
    /** Posts, on the calling thread, when it is another than before. */
    void setNetworkType(std::int64_t type) {
        if (_networkType.exchange(type) == type) return;
        NotificationCenter::defaultCenter().post(StoreClientNetworkTypeDidChangeNotification,
                                                 shared_from_this());
    }

private:
    std::atomic<std::int64_t> _networkType{0};
};

}  // namespace zornic
