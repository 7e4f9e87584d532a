#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "Platform/Toolkit/AlertController.h"
#include "Platform/Toolkit/Window.h"

namespace helmo {

/** What the host tells the driver: short messages over the screen, one at a time, that go by themselves or
   with a tap, a press of the knob or the car's back button. They wait while a screen asks something. Main
   thread. */
class HostNotices : public zornic::Object {
public:
    struct Text {
        std::string title, message;
    };
    /** How long a message stays, and how long it waits for what else there is to say. */
    static constexpr zornic::Seconds duration{6}, patience{1};

    /** On `window`, held weakly. */
    explicit HostNotices(std::weak_ptr<zornic::Window> window) : _window(std::move(window)) {}

    /** Says `text` when its turn has come. What still waits to be said of the same cause is replaced. */
    void tell(const std::string& cause, std::function<Text()> text);
    /** The same for a cause that is said once only. */
    void tellOnce(const std::string& cause, Text text);

private:
    struct Notice {
        std::string cause;
        std::function<Text()> text;
    };
    void waitForNext();
    void showNext();
    void hide();

    const std::weak_ptr<zornic::Window> _window;
    std::deque<Notice> _waiting;
    std::set<std::string> _told;
    std::shared_ptr<zornic::AlertController> _alert;
    zornic::Token _timer;
};

}  // namespace helmo
