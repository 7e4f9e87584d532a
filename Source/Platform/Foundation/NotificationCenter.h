#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Platform/Foundation/Task.h"
#include "Platform/Foundation/Value.h"

namespace zornic {

struct Notification {
    std::string name;
    /** Who posted it; may be none. */
    std::shared_ptr<Object> sender;
    Dictionary userInfo;
};

/** A registration; destroying it ends it. */
using Observation = Token;

/** Delivers notifications synchronously on the posting thread, in order of registration, to observers
   filtered by name and sender identity. Observers may come and go during a post: one that is gone is not
   called, one that is new is first called by the next post. Any thread. Ending an observation never waits: on
   the thread that ended it the handler is not called again, but one that another thread's post has already
   reached may still run or finish. A handler of notifications that are posted elsewhere therefore holds what
   it touches weakly. */
class NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    static NotificationCenter& defaultCenter();

    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    /** `sender` none: from any sender. The filter keeps an identity, not the object: it neither owns nor
     * calls it. */
    Observation observe(std::string name, const Object* sender, Handler handler);
    void post(const Notification& notification);
    void post(std::string name, std::shared_ptr<Object> sender, Dictionary userInfo = {});

private:
    struct Registration {
        const std::string name;
        const Object* const sender;
        const Handler handler;
        std::atomic<bool> ended{false};
    };
    /** Observations may outlive the centre. */
    struct Registrations {
        std::mutex mutex;
        std::vector<std::shared_ptr<Registration>> all;
    };

    const std::shared_ptr<Registrations> _registrations = std::make_shared<Registrations>();
};

}  // namespace zornic
