#include <algorithm>
#include <condition_variable>
#include <fstream>
#include <future>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "Benchmarks/Floors/ScanFloor.h"
#include "Benchmarks/Measuring.h"
#include "Benchmarks/PeakMemory.h"
#include "Benchmarks/ScanMusic.h"
#include "Benchmarks/Suite.h"
#include "Host/HelmoApplication.h"
#include "Host/Library/ThreadPriority.h"
#include "Host/Reader/ReaderTagReader.h"
#include "Host/TemporaryFolder.h"
#include "View Controllers/ZRNBrowserViewController.h"
#include "View Controllers/ZRNSongsViewController.h"

namespace helmo::benchmarks {

using namespace zornic;

namespace {

constexpr std::size_t files = 10'000, manyFiles = 100'000;
constexpr int rounds = 5;

/** Milliseconds from the start of a scan to its end; what is checked once a day is no part of it. */
double millisecondsOfScan(const std::shared_ptr<SqliteMediaLibrary>& library,
                          const std::filesystem::path& music, std::uint64_t filesThere,
                          std::uint64_t filesToRead) {
    std::mutex mutex;
    std::condition_variable changed;
    ScanProgress last;
    Scanner scanner(library, {music}, std::make_shared<ReaderTagReader>(ReaderProgram::find()));
    scanner.setProgressHandler([&](const ScanProgress& progress) {
        std::lock_guard lock(mutex);
        last = progress;
        if (progress.isFinished) changed.notify_all();
    });
    const double taken = milliseconds([&] {
        scanner.start();
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return last.isFinished; });
    });
    if (last.found != filesThere || last.read != filesToRead)
        throw std::runtime_error("the scan didn't read what it should");
    return taken;
}

struct ScanTimes {
    Pair first, again;
};

ScanTimes measureScans(const std::filesystem::path& music, std::uint64_t count, int warmUp, int counted) {
    std::vector<double> ours, floor, oursAgain, floorAgain;
    for (int round = -warmUp; round < counted; ++round) {
        const TemporaryFolder folder;
        const auto database = folder.path() / "floor.sqlite";
        double floorFirst = 0, floorSecond = 0;
        // On a thread that stands back as a scan's does, so that other programs hinder both alike.
        std::async(std::launch::async, [&] {
            standBack();
            floorFirst = scanFloor(music, database);
            floorSecond = rescanFloor(music, database);
        }).get();
        const auto library = SqliteMediaLibrary::open(folder.path() / "library.sqlite");
        if (!library) throw std::runtime_error("no library can be made");
        const double first = millisecondsOfScan(library, music, count, count);
        BackgroundWork::waitUntilIdle(std::chrono::seconds(30));
        const double second = millisecondsOfScan(library, music, count, 0);
        if (round < 0) continue;
        ours.push_back(first);
        floor.push_back(floorFirst);
        oursAgain.push_back(second);
        floorAgain.push_back(floorSecond);
    }
    return {{median(ours), median(floor)}, {median(oursAgain), median(floorAgain)}};
}

/** A helmo in real time with an empty library, which it fills as soon as it is opened. */
class ScanningHelmo {
public:
    explicit ScanningHelmo(const std::filesystem::path& music) : _helmo(lineFor(_folder.path(), music)) {
        std::ofstream(_folder.path() / "settings.toml") << "tabs = [\"songs\"]\n";
    }

    /** Milliseconds from its opening to the end of the frame that shows the first songs. */
    double millisecondsToFirstRows() {
        return milliseconds([&] {
            open();
            const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(20);
            for (bool isShown = false; !isShown;) {
                work();
                isShown = showsSongs();
                _helmo.drawFrame();
                if (std::chrono::steady_clock::now() > giveUp) throw std::runtime_error("no songs are shown");
            }
        });
    }
    /** The longest that the main thread takes for anything that comes before a frame, and for the frame,
       while a finger drags the list up and down until the scan has ended. */
    double longestFrameWhileDragging() {
        constexpr auto frameInterval = std::chrono::microseconds(16'667);
        constexpr int stepsOfDrag = 12;
        constexpr double step = 24, x = 400, bottom = 400;
        open();
        double longest = 0;
        auto due = std::chrono::steady_clock::now();
        for (int frame = 0; !BackgroundWork::isIdle() || frame < stepsOfDrag; ++frame) {
            longest = std::max(longest, milliseconds([&] {
                                   work();
                                   const int at = frame % stepsOfDrag;
                                   const Point finger{x, bottom - step * at};
                                   if (at == 0) window().touchDown(finger);
                                   if (at > 0) window().touchMove(finger);
                                   if (at == stepsOfDrag - 1) window().touchUp(finger);
                                   _helmo.drawFrame();
                               }));
            std::this_thread::sleep_until(due += frameInterval);
        }
        return longest;
    }

private:
    static CommandLine lineFor(const std::filesystem::path& data, const std::filesystem::path& music) {
        CommandLine line;
        line.headless = line.realtime = true;
        line.data = data;
        line.musicFolders = {music};
        line.screen = ScreenSize{800, 480, 1};
        return line;
    }
    void open() {
        if (!_helmo.openHeadless()) throw std::runtime_error("helmo can't be opened");
    }
    void work() {
        _helmo.runLoop().runDue();
        if (_helmo.runLoop().wantsFrames()) _helmo.runLoop().fireFrame();
    }
    Window& window() { return *_helmo.rootController().helmoWindow(); }
    bool showsSongs() {
        const auto tabs = _helmo.rootController().browserViewController()->tabs();
        const auto songs = std::dynamic_pointer_cast<ZRNSongsViewController>(tabs->selectedViewController());
        return songs && !songs->tableView()->indexPathsForVisibleRows().empty();
    }

    const TemporaryFolder _folder;
    HelmoApplication _helmo;
};

Figure rateFigure(const char* name, std::size_t count, const Pair& taken) {
    const auto tracksPerSecond = [&](double time) { return static_cast<double>(count) / time * 1000; };
    return Figure::ratio(name, 0.7, tracksPerSecond(taken.ours), tracksPerSecond(taken.floor), "tracks/s",
                         Figure::Limit::AtLeast);
}

/** The most memory that helmo has at any time while it fills its library, its first screen there. */
double peakMegabytesOfScan(const std::filesystem::path& music) {
    const TemporaryFolder folder;
    return peakMegabytes({HELMO_PROGRAM, "--headless", "--data", folder.path(), "--music", music},
                         R"({"do":"screens"})");
}

}  // namespace

Figures measureLargeScan() {
    const auto music = scanMusic(manyFiles);
    return {rateFigure("scan_100k_rate", manyFiles, measureScans(music, manyFiles, 0, 1).first),
            Figure::plain("scan_100k_rss_mb", 64, peakMegabytesOfScan(music), 0, "MB")};
}

Figures measureScan() {
    const auto music = scanMusic(files);
    const auto [first, again] = measureScans(music, files, 1, rounds);
    std::vector<double> rows, frames;
    for (int round = 0; round < rounds; ++round) {
        rows.push_back(ScanningHelmo(music).millisecondsToFirstRows());
        frames.push_back(ScanningHelmo(music).longestFrameWhileDragging());
    }
    return {rateFigure("scan_rate", files, first),
            Figure::plain("scan_first_rows_ms", 150, median(rows), 0, "ms"),
            Figure::longestFrame("scan_frame_ms", median(frames)),
            Figure::ratio("rescan", 2, again.ours, again.floor, "ms")};
}

}  // namespace helmo::benchmarks
