#pragma once

#include <atomic>

namespace zornic {

/** What the owner of the device does not want done on it; the host keeps it. Asked each time. Any thread. */
class RestrictionsMonitor {
public:
    static RestrictionsMonitor& shared() {
        static RestrictionsMonitor monitor;
        return monitor;
    }
    /** Whether media may be deleted; true until the host says otherwise. */
    bool allowsDeletion() const { return _allowsDeletion; }
    void setAllowsDeletion(bool allows) { _allowsDeletion = allows; }

private:
    std::atomic<bool> _allowsDeletion{true};
};

}  // namespace zornic
