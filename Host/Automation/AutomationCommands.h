#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "Host/Automation/AutomationTarget.h"
#include "Host/Automation/CommandRequests.h"
#include "Host/Automation/TimeDriver.h"

namespace helmo {

/** Carries out automation commands on a running helmo: one JSON object in, one out. What can't be done
   answers with a sentence and changes nothing. Main thread. */
class AutomationCommands {
public:
    explicit AutomationCommands(AutomationTarget& target) : _target(target), _time(target) {}

    /** Answers one line. Never throws, whatever the line. */
    std::string answer(const std::string& line);
    /** Whether `quit` was asked for. */
    bool wantsToQuit() const { return _wantsToQuit; }
    TimeDriver& time() { return _time; }

private:
    using Json = nlohmann::json;
    using Handler = Json (AutomationCommands::*)(const Json& command);
    static Handler handlerNamed(const std::string& name);

    Json screens(const Json& command);
    Json tabs(const Json& command);
    Json tree(const Json& command);
    Json rows(const Json& command);
    Json tap(const Json& command);
    Json drag(const Json& command);
    Json knob(const Json& command);
    Json back(const Json& command);
    Json advance(const Json& command);
    Json screenshot(const Json& command);
    Json player(const Json& command);
    Json settings(const Json& command);
    Json host(const Json& command);
    Json stats(const Json& command);
    Json quit(const Json& command);

    zornic::Window& window() { return *_target.rootController().helmoWindow(); }
    zornic::Point pointOf(const TapRequest& request);
    void checkOnDisplay(zornic::Point point);
    void endTouch(TapRequest::End end, zornic::Point point);

    AutomationTarget& _target;
    TimeDriver _time;
    bool _wantsToQuit = false;
};

}  // namespace helmo
