#include "Platform/Foundation/NotificationCenter.h"

namespace zornic {

NotificationCenter& NotificationCenter::defaultCenter() {
    static auto& center = *new NotificationCenter;  // outlives every thread that posts
    return center;
}

Observation NotificationCenter::observe(std::string name, const Object* sender, Handler handler) {
    const std::shared_ptr<Registration> registration(
        new Registration{std::move(name), sender, std::move(handler)});
    {
        std::lock_guard lock(_registrations->mutex);
        _registrations->all.push_back(registration);
    }
    return Observation([registration, weak = std::weak_ptr(_registrations)] {
        registration->ended = true;
        const auto registrations = weak.lock();
        if (!registrations) return;
        std::lock_guard lock(registrations->mutex);
        std::erase(registrations->all, registration);
    });
}

void NotificationCenter::post(const Notification& notification) {
    std::vector<std::shared_ptr<Registration>> interested;
    {
        std::lock_guard lock(_registrations->mutex);
        for (const auto& registration : _registrations->all) {
            const bool fromSender =
                !registration->sender || registration->sender == notification.sender.get();
            if (fromSender && registration->name == notification.name) interested.push_back(registration);
        }
    }
    for (const auto& registration : interested)
        if (!registration->ended) registration->handler(notification);
}

void NotificationCenter::post(std::string name, std::shared_ptr<Object> sender, Dictionary userInfo) {
    post(Notification{std::move(name), std::move(sender), std::move(userInfo)});
}

}  // namespace zornic
