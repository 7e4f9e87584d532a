#pragma once

#include <memory>

#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Toolkit/AlertController.h"
#include "Platform/Toolkit/Window.h"

namespace helmo {

/** Tells the driver when the player skips what it can't play: a short message that goes by itself. Main
 * thread. */
class PlaybackNotice : public zornic::Object {
public:
    static constexpr zornic::Seconds duration{5};
    /** For the failures of `player`, on `window`, held weakly. */
    PlaybackNotice(const zornic::Object* player, std::weak_ptr<zornic::Window> window);
    void didMake() override;

private:
    void show(const zornic::Notification& failure);
    void hide();

    const zornic::Object* const _player;
    const std::weak_ptr<zornic::Window> _window;
    std::shared_ptr<zornic::AlertController> _alert;
    zornic::Observation _observation;
    zornic::Token _timeout;
};

}  // namespace helmo
