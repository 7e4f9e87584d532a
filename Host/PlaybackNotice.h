#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Toolkit/AlertController.h"
#include "Platform/Toolkit/Window.h"

namespace helmo {

/** Tells the driver when the player skips what it can't play: a short message that goes by itself. Main
 * thread. */
class PlaybackNotice : public zornic::Object {
public:
    /** How long the message stays, and how long it waits for further failures. */
    static constexpr zornic::Seconds duration{5}, patience{1};
    /** For the failures of `player`, on `window`, held weakly. */
    PlaybackNotice(const zornic::Object* player, std::weak_ptr<zornic::Window> window);
    void didMake() override;

private:
    void note(const zornic::Notification& failure);
    void show();
    void hide();
    std::string message() const;

    const zornic::Object* const _player;
    const std::weak_ptr<zornic::Window> _window;
    std::shared_ptr<zornic::AlertController> _alert;
    /** Since the last message. */
    std::uint64_t _failures = 0;
    std::string _firstTitle;
    zornic::Observation _observation;
    zornic::Token _timeout;
};

}  // namespace helmo
