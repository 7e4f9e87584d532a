#pragma once

#include <deque>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Host/Automation/AutomationCommands.h"
#include "Host/HelmoApplication.h"
#include "Tests/Monkey/MusicFolder.h"

/** Works a headless helmo at random, and looks after each step whether what must always hold still does: in
   knob mode exactly one element is focused wherever one can be, back leads out, and every command is
   answered. The same seed does the same steps. */
class Monkey {
public:
    Monkey(helmo::HelmoApplication& application, MusicFolder& music, std::uint64_t seed);

    /** Does so many steps, or fewer when one shows a fault; whether all was well. */
    bool run(int steps);
    /** The last steps and, when there is one, the fault behind them; a line each. */
    std::string report() const;
    /** How many steps ended on which screen. */
    const std::map<std::string, int>& screens() const { return _screens; }
    /** A number that any difference between two runs changes. */
    std::size_t fingerprint() const { return _fingerprint; }

private:
    using Json = nlohmann::json;

    /** A step: an automation command, or {"finger":"down"|"move"|"up"|"cancel"}, {"toggle":song}, {"out"}. */
    Json chosenStep();
    Json chosenTap();
    Json chosenDrag();
    Json chosenFinger();
    Json chosenSetting();
    void perform(const Json& step);
    Json command(const Json& step);
    void moveFinger(const Json& step);

    void checkFocus();
    void goOut();
    bool isOut();
    void require(bool condition, const std::string& what);

    zornic::Window& window() { return *_application.rootController().helmoWindow(); }
    unsigned below(unsigned limit) { return static_cast<unsigned>(_random() % limit); }
    template <class List>
    auto oneOf(const List& list) {
        return *(std::begin(list) + below(static_cast<unsigned>(std::size(list))));
    }
    zornic::Point anyPoint();
    /** The centre of something on the display that a finger may be meant for. */
    zornic::Point pointOfInterest();

    helmo::HelmoApplication& _application;
    helmo::AutomationCommands _commands;
    MusicFolder& _music;
    std::mt19937_64 _random;
    std::deque<std::string> _lastSteps;
    std::string _fault;
    int _done = 0;
    std::map<std::string, int> _screens;
    std::size_t _fingerprint = 0;
};
