#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "Benchmarks/BenchmarkApplication.h"
#include "Benchmarks/FrameLibrary.h"
#include "Benchmarks/FrameRecorder.h"
#include "Benchmarks/Measuring.h"
#include "Benchmarks/Suite.h"
#include "Platform/Toolkit/TableViewController.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"
#include "Views/ZRNTableViewCell.h"

namespace helmo::benchmarks {

using namespace zornic;

namespace {

constexpr int albums = 1'000, rounds = 3, flings = 8, bareFrames = 20;
constexpr double limit = 4, percentile = 0.99;

/** helmo in real time, with the songs of a library on view whose covers lie in files. */
class FlungHelmo {
public:
    explicit FlungHelmo(const FrameLibrary& library) : _helmo(lineFor(library)) {
        if (!_helmo.openHeadless()) throw std::runtime_error("helmo can't be opened");
        const std::string problem = _helmo.changeSettings({{"tabs", {"songs"}}});
        if (!problem.empty()) throw std::runtime_error(problem);
        rest();
    }
    /** Milliseconds of the main thread for each frame of a fling through the list, until it is at rest. */
    void fling(std::vector<double>& times) {
        constexpr int steps = 6;
        constexpr double step = 40, x = 400, bottom = 400;
        for (int at = 0; at <= steps; ++at)
            times.push_back(frame([&] {
                const Point finger{x, bottom - step * at};
                if (at == 0) window().touchDown(finger);
                if (at > 0) window().touchMove(finger);
                if (at == steps) window().touchUp(finger);
            }));
        while (_helmo.runLoop().wantsFrames()) times.push_back(frame([] {}));
    }
    /** Milliseconds of a bare frame, in the rhythm in which the fling's come. */
    static double bare(const BareFrame& frame, const Surface& pixels) {
        const auto due = std::chrono::steady_clock::now() + frameInterval;
        const double taken = milliseconds([&] { frame.draw(pixels); });
        std::this_thread::sleep_until(due);
        return taken;
    }
    /** Until every cover is there. */
    void rest() {
        TimeDriver(_helmo).advance(Seconds(0.5));
        for (const auto& cell : table().visibleCells())
            if (coverOf(*cell).size() != coverSize) throw std::runtime_error("a cover didn't come");
    }
    BareFrame bareFrame() { return recordedFrame(window(), BareFrame::wholeDisplay); }

private:
    static constexpr Size coverSize{36, 36};
    static constexpr auto frameInterval = std::chrono::microseconds(16'667);

    static CommandLine lineFor(const FrameLibrary& library) {
        CommandLine line;
        line.headless = line.realtime = true;
        line.data = library.data();
        line.musicFolders = {library.music()};
        line.screen = ScreenSize{800, 480, 1};
        return line;
    }
    Window& window() { return *_helmo.rootController().helmoWindow(); }
    TableView& table() {
        const auto& tabs = _helmo.rootController().browserViewController()->tabs();
        return *std::dynamic_pointer_cast<TableViewController>(tabs->selectedViewController())->tableView();
    }
    static Image coverOf(const TableViewCell& cell) {
        return dynamic_cast<const ZRNTableViewCell&>(cell).artworkImage();
    }
    double frame(const std::function<void()>& touch) {
        const auto due = std::chrono::steady_clock::now() + frameInterval;
        const double taken = milliseconds([&] {
            _helmo.runLoop().runDue();
            touch();
            if (_helmo.runLoop().wantsFrames()) _helmo.runLoop().fireFrame();
            _helmo.drawFrame();
        });
        for (const auto& cell : table().visibleCells())
            if (cell->textLabel()->text().empty() || !coverOf(*cell))
                throw std::runtime_error("a row was shown without its text, or without a placeholder");
        std::this_thread::sleep_until(due);
        return taken;
    }

    HelmoApplication _helmo;
};

}  // namespace

Figures measureFling() {
    const FrameLibrary library(albums);
    FlungHelmo helmo(library);
    const BareFrame bare = helmo.bareFrame();
    const Surface pixels(BareFrame::wholeDisplay.width, BareFrame::wholeDisplay.height);
    std::vector<double> ours, floor;
    for (int round = 0; round < rounds; ++round) {
        std::vector<double> frames;
        for (int at = 0; at < flings; ++at) {
            helmo.fling(frames);
            for (int again = 0; again < bareFrames; ++again) floor.push_back(helmo.bare(bare, pixels));
        }
        std::ranges::sort(frames);
        ours.push_back(frames[static_cast<std::size_t>(percentile * static_cast<double>(frames.size() - 1))]);
        helmo.rest();
    }
    return {Figure::ratio("fling_artwork", limit, median(ours), median(floor), "ms")};
}

}  // namespace helmo::benchmarks
