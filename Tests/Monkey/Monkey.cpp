#include "Tests/Monkey/Monkey.h"

#include <algorithm>
#include <array>
#include <functional>

#include "Platform/Toolkit/Control.h"
#include "Platform/Toolkit/IndexBar.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Platform/Toolkit/TableViewCell.h"
#include "Utilities/ZRNHelmoScreen.h"

using namespace zornic;
using ViewPointer = std::shared_ptr<View>;

namespace {

constexpr std::size_t stepsToShow = 40;
/** More backs than there are screens over each other. */
constexpr int enoughBacks = 12;

using Visit = std::function<void(const ViewPointer& view, bool shown)>;

/** Every view of a tree, and whether it and all above it can be seen and touched. */
void visit(const ViewPointer& view, const Visit& visitor, bool shown = true) {
    shown = shown && !view->isHidden() && view->alpha() > 0 && view->isUserInteractionEnabled();
    visitor(view, shown);
    for (const auto& subview : view->subviews()) visit(subview, visitor, shown);
}

bool isOnDisplay(const Window& window, const View& view) {
    const Rect place = view.convertToWindow(view.bounds());
    return !place.empty() && place.intersects(window.bounds());
}

bool takesFingers(const View& view) {
    return dynamic_cast<const Control*>(&view) || dynamic_cast<const TableViewCell*>(&view) ||
           dynamic_cast<const IndexBar*>(&view);
}

}  // namespace

Monkey::Monkey(helmo::HelmoApplication& application, MusicFolder& music, std::uint64_t seed)
    : _application(application), _commands(application), _music(music), _random(seed) {}

bool Monkey::run(int steps) {
    for (; _done < steps && _fault.empty(); ++_done) {
        const Json step = chosenStep();
        _lastSteps.push_back(std::to_string(_done) + ": " + step.dump());
        if (_lastSteps.size() > stepsToShow) _lastSteps.pop_front();
        perform(step);
        checkFocus();
        ++_screens[window().topPresentedViewController()->contentViewController()->className()];
    }
    return _fault.empty();
}

std::string Monkey::report() const {
    std::string text;
    for (const auto& step : _lastSteps) text += step + "\n";
    return text + _fault + (_fault.empty() ? "" : "\n");
}

void Monkey::require(bool condition, const std::string& what) {
    if (!condition && _fault.empty()) _fault = what;
}

// What to do

Monkey::Json Monkey::chosenStep() {
    const unsigned choice = below(1000);
    if (choice < 300) return chosenTap();
    if (choice < 400) return chosenDrag();
    if (choice < 460) return chosenFinger();
    if (choice < 620)
        return {{"do", "knob"},
                {"turn", below(2) ? 1 + static_cast<int>(below(4)) : -1 - static_cast<int>(below(12))}};
    if (choice < 720)
        return {{"do", "knob"}, {"press", true}, {"hold", oneOf(std::array{0.0, 0.0, 0.0, 0.3, 1.2})}};
    if (choice < 800) return {{"do", "back"}};
    if (choice < 930)
        return {{"do", "advance"},
                {"seconds", oneOf(std::array{0.0, 0.01, 0.1, 0.1, 0.4, 0.4, 1.0, 6.0, 60.0})}};
    if (choice < 960) return chosenSetting();
    if (choice < 980) return {{"do", "host"}, {"call", below(4) ? "showNowPlaying" : "reloadRadio"}};
    if (choice < 990) return {{"toggle", below(MusicFolder::songs)}};
    return {{"out", true}};
}

Point Monkey::anyPoint() {
    const Size size = window().bounds().size;
    return {below(static_cast<unsigned>(size.width)) + 0.5, below(static_cast<unsigned>(size.height)) + 0.5};
}

Point Monkey::pointOfInterest() {
    std::vector<Point> points;
    for (const auto& subview : window().subviews())
        visit(subview, [&](const ViewPointer& view, bool shown) {
            if (!shown || !takesFingers(*view)) return;
            const Rect place = view->convertToWindow(view->bounds());
            const double part = (1 + below(9)) / 10.0;
            const Point point{place.x() + place.width() * part, place.y() + place.height() * part};
            if (window().bounds().contains(point)) points.push_back(point);
        });
    return points.empty() ? anyPoint() : oneOf(points);
}

Monkey::Json Monkey::chosenTap() {
    const Point point = below(4) ? pointOfInterest() : anyPoint();
    return {{"do", "tap"},
            {"x", point.x},
            {"y", point.y},
            {"hold", oneOf(std::array{0.0, 0.0, 0.0, 0.2, 0.6, 2.5})},
            {"end", oneOf(std::array{"inside", "inside", "inside", "outside", "cancel"})}};
}

Monkey::Json Monkey::chosenDrag() {
    Point from = anyPoint();
    const Point to = anyPoint();
    if (below(4) == 0) from.x = below(12);                                  // where a screen is swiped back
    if (below(4) == 0) from.x = window().bounds().width() - 1 - below(12);  // where an index stands
    return {{"do", "drag"},
            {"from", {from.x, from.y}},
            {"to", {to.x, to.y}},
            {"seconds", oneOf(std::array{0.0, 0.05, 0.1, 0.2})}};
}

Monkey::Json Monkey::chosenFinger() {
    const Point point = below(2) ? pointOfInterest() : anyPoint();
    return {{"finger", oneOf(std::array{"down", "move", "move", "up", "cancel"})},
            {"x", point.x},
            {"y", point.y}};
}

Monkey::Json Monkey::chosenSetting() {
    const auto set = [](const char* name, const Json& value) -> Json {
        return {{"do", "settings"}, {"set", {{name, value}}}};
    };
    switch (below(8)) {
        case 0:
            return set("sortByArtist", below(2) == 0);
        case 1:
            return set("groupByAlbumArtist", below(2) == 0);
        case 2: {
            std::vector<std::string> tabs = {"songs",      "artists",  "albums", "playlists", "compilations",
                                             "audiobooks", "brivomix", "radio",  "genres",    "composers"};
            std::shuffle(tabs.begin(), tabs.end(), _random);
            tabs.resize(below(static_cast<unsigned>(tabs.size()) + 1));
            return set("tabs", tabs);
        }
        case 3:
            return set("brivo", below(2) == 0);
        default:
            return set("uiMode", oneOf(std::array{0, 1, 2, 2}));
    }
}

// Doing it

void Monkey::perform(const Json& step) {
    if (step.contains("out")) return goOut();
    if (step.contains("finger")) return moveFinger(step);
    if (step.contains("toggle")) {
        _music.toggle(step["toggle"].get<unsigned>());
        return _application.rescan();
    }
    command(step);
}

Monkey::Json Monkey::command(const Json& step) {
    const std::string text = _commands.answer(step.dump());
    const Json answer = Json::parse(text, nullptr, false);
    require(answer.is_object() && answer.value("ok", false), step.dump() + " was answered with " + text);
    return answer;
}

void Monkey::moveFinger(const Json& step) {
    const Point point{step["x"].get<double>(), step["y"].get<double>()};
    const std::string& kind = step["finger"].get_ref<const std::string&>();
    if (kind == "down")
        window().touchDown(point);
    else if (kind == "move")
        window().touchMove(point);
    else if (kind == "up")
        window().touchUp(point);
    else
        window().touchCancel();
    _commands.time().settle();
}

// What must hold

void Monkey::checkFocus() {
    const auto front = window().topPresentedViewController();
    std::vector<ViewPointer> focused;
    visit(strong(&window()), [&](const ViewPointer& view, bool) {
        if (view->isFocused()) focused.push_back(view);
    });
    std::size_t focusable = 0;
    visit(front->view(), [&](const ViewPointer& view, bool shown) {
        focusable += shown && view->canBecomeFocused() && isOnDisplay(window(), *view);
    });
    const bool isKnob = ZRNHelmoUIMode() == ZRNHelmoUIModeKnob;
    const std::size_t wanted = isKnob && focusable > 0 ? 1 : 0;
    require(focused.size() == wanted, std::to_string(focused.size()) + " focused elements of " +
                                          std::to_string(focusable) + " focusable ones on " +
                                          front->contentViewController()->className());
    if (focused.empty()) return;
    require(focused.front()->isDescendantOf(*front->view()),
            "the focus is not on the front screen, " + front->contentViewController()->className());
    if (!_application.runLoop().wantsFrames() && !window().hasTouch())
        require(isOnDisplay(window(), *focused.front()), "what is focused is not on the display");
}

bool Monkey::isOut() {
    const auto root = window().rootViewController();
    if (window().topPresentedViewController() != root) return false;
    const auto content = root->contentViewController();
    for (const ViewController* at = content.get(); at; at = at->parentViewController())
        if (const auto* stack = dynamic_cast<const NavigationController*>(at);
            stack && stack->viewControllers().size() > 1)
            return false;
    return true;
}

void Monkey::goOut() {
    for (int backs = 0; backs < enoughBacks && !isOut(); ++backs) {
        command({{"do", "back"}});
        command({{"do", "advance"}, {"seconds", 1}});
    }
    const Json screens = command({{"do", "screens"}});
    require(isOut(), "back does not lead out of " + screens.dump());
    const std::string answers =
        screens.dump() + command({{"do", "player"}}).dump() + command({{"do", "tree"}}).dump();
    _fingerprint = _fingerprint * 31 + std::hash<std::string>()(answers);
}
