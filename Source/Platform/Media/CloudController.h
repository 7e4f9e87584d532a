#pragma once

#include <atomic>

namespace zornic {

/** The library that the driver keeps with a service on the network, beside what is on the device. Any
 * thread. */
class CloudController {
public:
    static CloudController& shared() {
        static CloudController controller;
        return controller;
    }
    /** Off until the host turns it on. */
    bool isCloudEnabled() const { return _cloudEnabled; }
    void setCloudEnabled(bool enabled) { _cloudEnabled = enabled; }

private:
    std::atomic<bool> _cloudEnabled{false};
};

}  // namespace zornic
