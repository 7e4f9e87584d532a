#pragma once

#include <gtest/gtest.h>

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Platform/Toolkit/Window.h"

namespace zornic {

using Log = std::vector<std::string>;

/** Writes down its appearance as "name.will+", "name.did+", "name.will-", "name.did-". */
class RecordingController : public ViewController {
public:
    RecordingController(std::string name, Log& log) : _name(std::move(name)), _log(log) {
        setIdentifier(_name);
    }
    void viewWillAppear(bool animated) override {
        ViewController::viewWillAppear(animated);
        _log.push_back(_name + ".will+");
        if (onWillAppear) onWillAppear();
    }
    void viewDidAppear(bool animated) override {
        ViewController::viewDidAppear(animated);
        _log.push_back(_name + ".did+");
    }
    void viewWillDisappear(bool animated) override {
        ViewController::viewWillDisappear(animated);
        _log.push_back(_name + ".will-");
    }
    void viewDidDisappear(bool animated) override {
        ViewController::viewDidDisappear(animated);
        _log.push_back(_name + ".did-");
    }
    Task onWillAppear;

private:
    const std::string _name;
    Log& _log;
};

/** A visible window on a screen of 800 x 480, on a clock that the test moves. */
class ControllerTest : public testing::Test {
protected:
    void show(const std::shared_ptr<ViewController>& root) {
        window->setScreen(screen);
        window->setWindowHidden(false);
        window->setRootViewController(root);
        window->takeDamage();
        log.clear();
    }
    std::shared_ptr<RecordingController> screenNamed(const std::string& name) {
        return make<RecordingController>(name, log);
    }
    /** What was written since the last call, in one line. */
    std::string events() {
        std::string line;
        for (const auto& event : std::exchange(log, {})) line += (line.empty() ? "" : " ") + event;
        return line;
    }
    void frame(Duration after) {
        clock.advance(after);
        loop.runDue();
        loop.fireFrame();
        window->takeDamage();
    }
    /** Sixty a second, for so long. */
    void frames(Seconds time) {
        for (; time > Seconds(0); time -= Seconds(1.0 / 60)) frame(toDuration(Seconds(1.0 / 60)));
    }
    void settle() { frame(std::chrono::seconds(1)); }

    ManualClock clock;
    RunLoop loop{clock};
    Log log;
    std::shared_ptr<Screen> screen = make<Screen>(Size{800, 480}, 1.0);
    std::shared_ptr<Window> window = make<Window>(Rect{0, 0, 800, 480});
};

}  // namespace zornic
