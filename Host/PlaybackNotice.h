#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Host/HostNotices.h"
#include "Platform/Foundation/NotificationCenter.h"

namespace helmo {

/** Tells the driver when the player skips what it can't play. Main thread. */
class PlaybackNotice : public zornic::Object {
public:
    /** For the failures of `player`. */
    PlaybackNotice(const zornic::Object* player, std::shared_ptr<HostNotices> notices)
        : _player(player), _notices(std::move(notices)) {}
    void didMake() override;

private:
    void note(const zornic::Notification& failure);
    HostNotices::Text takeText();

    const zornic::Object* const _player;
    const std::shared_ptr<HostNotices> _notices;
    /** Since the last message. */
    std::uint64_t _failures = 0;
    std::string _firstTitle;
    zornic::Observation _observation;
};

}  // namespace helmo
