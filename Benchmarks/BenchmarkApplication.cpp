#include "Benchmarks/BenchmarkApplication.h"

#include <algorithm>
#include <stdexcept>

#include "Benchmarks/Measuring.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Toolkit/TableViewController.h"

namespace helmo::benchmarks {

using namespace zornic;

namespace {

CommandLine commandLineFor(const std::filesystem::path& data,
                           const std::vector<std::filesystem::path>& music) {
    CommandLine line;
    line.headless = true;
    if (!data.empty()) line.data = data;
    line.musicFolders = music;
    line.screen = ScreenSize{800, 480, 1};
    return line;
}

}  // namespace

BenchmarkApplication::BenchmarkApplication(const std::filesystem::path& data,
                                           const std::vector<std::filesystem::path>& music)
    : _helmo(commandLineFor(data, music)), _time(_helmo) {
    if (!_helmo.openHeadless()) throw std::runtime_error("helmo can't be opened");
    _time.settle();
}

double BenchmarkApplication::millisecondsOfTap(Point point) {
    window().touchDown(point);
    _time.settle();
    return milliseconds([&] {
        window().touchUp(point);
        _helmo.runLoop().runDue();
        _helmo.drawFrame();
    });
}

double BenchmarkApplication::millisecondsOfTapToRest(Point point) {
    constexpr auto rest = std::chrono::seconds(1);
    window().touchDown(point);
    _time.settle();
    return milliseconds([&] {
        window().touchUp(point);
        _helmo.runLoop().runDue();
        if (_helmo.runLoop().wantsFrames()) {
            _helmo.virtualClock()->moveTo(_helmo.runLoop().now() + rest);
            _helmo.runLoop().runDue();
            _helmo.runLoop().fireFrame();
        }
        _helmo.drawFrame();
    });
}

double BenchmarkApplication::millisecondsOfFrame() {
    return milliseconds([&] {
        _helmo.runLoop().runDue();
        if (_helmo.runLoop().wantsFrames()) _helmo.runLoop().fireFrame();
        _helmo.drawFrame();
    });
}

double BenchmarkApplication::millisecondsOfFrames(Seconds time) {
    double total = 0;
    for (const auto end = _helmo.runLoop().now() + toDuration(time); _helmo.runLoop().now() < end;) {
        BackgroundWork::waitUntilIdle(std::chrono::seconds(10));
        _helmo.virtualClock()->moveTo(_helmo.runLoop().now() + toDuration(TimeDriver::frameInterval));
        const double taken = millisecondsOfFrame();
        _longestFrame = std::max(_longestFrame, taken);
        total += taken;
    }
    return total;
}

void BenchmarkApplication::arrangeTabs(const std::vector<std::string>& names) {
    const std::string problem = _helmo.changeSettings({{"tabs", names}});
    if (!problem.empty()) throw std::runtime_error(problem);
    _time.settle();
}

Point BenchmarkApplication::tabPoint(const std::string& identifier) {
    const auto& tabs = browser().tabs();
    for (const auto& screen : tabs->viewControllers()) {
        if (screen->identifier() != identifier || !screen->tabBarItem()) continue;
        for (const auto& button : tabs->tabBar()->buttons())
            if (button->item().title == screen->tabBarItem()->title)
                return button->convertToWindow(button->bounds()).center();
    }
    throw std::runtime_error("there is no tab of " + identifier);
}

TableView& BenchmarkApplication::frontTable() {
    auto front = browser().topViewController();
    if (front == browser().tabs()) front = browser().tabs()->selectedViewController();
    const auto list = std::dynamic_pointer_cast<TableViewController>(front);
    if (!list) throw std::runtime_error("the front screen is no list");
    return *list->tableView();
}

}  // namespace helmo::benchmarks
