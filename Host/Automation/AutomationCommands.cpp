#include "Host/Automation/AutomationCommands.h"

#include <cmath>
#include <fstream>
#include <unordered_map>

#include "Host/Automation/AnsweredLine.h"
#include "Host/Automation/CommandArguments.h"
#include "Host/Automation/ScreenDescription.h"
#include "Platform/Toolkit/TableView.h"

namespace helmo {

using namespace zornic;

namespace {

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

const char* nameOf(AVPlaybackState state) {
    switch (state) {
        case AVPlaybackState::Playing:
            return "playing";
        case AVPlaybackState::Paused:
            return "paused";
        case AVPlaybackState::Seeking:
            return "seeking";
        case AVPlaybackState::Stopped:
            break;
    }
    return "stopped";
}

const char* kindOf(const AVItem& item) {
    if (item.isRadioItem()) return "radio";
    if (item.isAdvertisement()) return "advertisement";
    return "library";
}

/** Resident memory, in kilobytes; 0 when the system does not tell. */
long residentMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (long kilobytes = 0; word == "VmRSS:" && status >> kilobytes) return kilobytes;
    return 0;
}

}  // namespace

AutomationCommands::Handler AutomationCommands::handlerNamed(const std::string& name) {
    static const std::unordered_map<std::string, Handler> handlers = {
        {"screens", &AutomationCommands::screens}, {"tabs", &AutomationCommands::tabs},
        {"tree", &AutomationCommands::tree},       {"rows", &AutomationCommands::rows},
        {"tap", &AutomationCommands::tap},         {"drag", &AutomationCommands::drag},
        {"knob", &AutomationCommands::knob},       {"back", &AutomationCommands::back},
        {"advance", &AutomationCommands::advance}, {"screenshot", &AutomationCommands::screenshot},
        {"player", &AutomationCommands::player},   {"settings", &AutomationCommands::settings},
        {"host", &AutomationCommands::host},       {"stats", &AutomationCommands::stats},
        {"quit", &AutomationCommands::quit},
    };
    const auto found = handlers.find(name);
    if (found == handlers.end()) throw CommandError("There is no command " + quoted(name) + ".");
    return found->second;
}

std::string AutomationCommands::answer(const std::string& line) {
    return answeredLine(line, [this](const std::string& name, const Json& command) {
        const Handler handler = handlerNamed(name);
        _time.settle();
        return (this->*handler)(command);
    });
}

nlohmann::json AutomationCommands::screens(const Json&) { return {{"stack", describedScreens(window())}}; }

nlohmann::json AutomationCommands::tabs(const Json&) {
    const auto& container = _target.rootController().browserViewController()->tabs();
    Json tabs = Json::array(), more = Json::array();
    for (const auto& screen : container->viewControllers())
        tabs.push_back({{"identifier", screen->identifier()},
                        {"title", screen->tabBarItem() ? screen->tabBarItem()->title : screen->title()},
                        {"selected", screen == container->selectedViewController()}});
    for (const auto& screen : container->overflowViewControllers())
        more.push_back(screen->tabBarItem() ? screen->tabBarItem()->title : screen->title());
    return {{"tabs", tabs}, {"more", more}};
}

nlohmann::json AutomationCommands::tree(const Json& command) {
    const bool all = command.contains("views") && CommandArguments(command).text("views") == "all";
    return {{"root", describedTree(window(), all)}};
}

nlohmann::json AutomationCommands::rows(const Json&) {
    const auto list = frontList(window());
    if (!list) throw CommandError("The front screen has no list.");
    return describedRows(*list);
}

void AutomationCommands::checkOnDisplay(Point point) {
    const Size size = window().bounds().size;
    if (point.x < 0 || point.y < 0 || point.x >= size.width || point.y >= size.height)
        throw CommandError("The point is off the display.");
}

Point AutomationCommands::pointOf(const TapRequest& request) {
    if (!request.text) {
        checkOnDisplay(request.point);
        return request.point;
    }
    const auto view = visibleViewShowing(window(), *request.text);
    if (!view) throw CommandError("No visible view shows " + quoted(*request.text) + ".");
    return view->convertToWindow(view->bounds()).center();
}

void AutomationCommands::endTouch(TapRequest::End end, Point point) {
    if (end == TapRequest::End::Cancel) return window().touchCancel();
    if (end == TapRequest::End::Outside) {
        const Size size = window().bounds().size;
        // The far corner is outside of whatever was touched.
        const Point away{point.x < size.width / 2 ? size.width - 1 : 0,
                         point.y < size.height / 2 ? size.height - 1 : 0};
        window().touchMove(away);
        point = away;
    }
    window().touchUp(point);
}

nlohmann::json AutomationCommands::tap(const Json& command) {
    const TapRequest request(command);
    const Point point = pointOf(request);
    window().touchDown(point);
    if (request.hold > 0) _time.advance(Seconds(request.hold));
    endTouch(request.end, point);
    _time.settle();
    return nullptr;
}

nlohmann::json AutomationCommands::drag(const Json& command) {
    const DragRequest request(command);
    const Point from = request.from, to = request.to;
    checkOnDisplay(from);
    checkOnDisplay(to);
    const int steps =
        std::max(1, static_cast<int>(std::lround(request.seconds / TimeDriver::frameInterval.count())));
    window().touchDown(from);
    for (int step = 1; step <= steps; ++step) {
        _time.advance(TimeDriver::frameInterval);
        const double part = static_cast<double>(step) / steps;
        window().touchMove({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
    }
    window().touchUp(to);
    _time.settle();
    return nullptr;
}

nlohmann::json AutomationCommands::knob(const Json& command) {
    const KnobRequest request(command);
    const int direction = request.turn < 0 ? -1 : 1;
    for (int detent = 0; detent != request.turn; detent += direction) {
        window().turnKnob(direction);
        _time.settle();
    }
    if (request.press) {
        window().pressKnob(true);
        if (request.hold > 0) _time.advance(Seconds(request.hold));
        window().pressKnob(false);
        _time.settle();
    }
    return nullptr;
}

nlohmann::json AutomationCommands::back(const Json&) {
    window().pressBack();
    _time.settle();
    return nullptr;
}

nlohmann::json AutomationCommands::advance(const Json& command) {
    _time.advance(Seconds(CommandArguments(command).number("seconds", 0, longestTime)));
    return nullptr;
}

nlohmann::json AutomationCommands::screenshot(const Json& command) {
    const std::string problem = _target.writeScreenshot(CommandArguments(command).text("file"));
    if (!problem.empty()) throw CommandError(problem);
    return nullptr;
}

nlohmann::json AutomationCommands::player(const Json&) {
    const auto& player = _target.rootController().player();
    if (!player) throw CommandError("There is no player.");
    Json item = nullptr;
    if (const auto current = player->currentItem())
        item = {{"title", current->mainTitle()},
                {"artist", current->artist()},
                {"album", current->albumTitle()},
                {"kind", kindOf(*current)}};
    return {{"item", item},
            {"state", nameOf(player->state())},
            {"elapsed", player->currentTime().count()},
            {"duration", player->durationOfCurrentItemIfAvailable().count()},
            {"shuffle", player->activeShuffleType()},
            {"repeat", player->activeRepeatType()},
            {"index", player->playbackIndex()},
            {"count", player->playbackCount()}};
}

nlohmann::json AutomationCommands::settings(const Json& command) {
    if (command.contains("set")) {
        if (!command["set"].is_object()) throw CommandError("\"set\" must be an object of settings.");
        const std::string problem = _target.changeSettings(command["set"]);
        if (!problem.empty()) throw CommandError(problem);
        _time.settle();
    }
    return {{"settings", _target.settings()}};
}

nlohmann::json AutomationCommands::host(const Json& command) {
    const std::string call = CommandArguments(command).text("call");
    if (call == "showNowPlaying")
        _target.rootController().showNowPlaying();
    else if (call == "reloadRadio")
        _target.rootController().reloadRadio();
    else
        throw CommandError("There is no call " + quoted(call) + ".");
    _time.settle();
    return nullptr;
}

nlohmann::json AutomationCommands::stats(const Json&) {
    const DisplayStatistics statistics = _target.takeStatistics();
    return {{"frames", statistics.frames},
            {"frame_ms", {{"p50", statistics.p50}, {"p99", statistics.p99}, {"max", statistics.max}}},
            {"rss_kb", residentMemory()},
            {"start_ms", statistics.start},
            {"cells", TableView::cellsMade()}};
}

nlohmann::json AutomationCommands::quit(const Json&) {
    _wantsToQuit = true;
    return nullptr;
}

}  // namespace helmo
