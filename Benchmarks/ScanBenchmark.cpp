#include <condition_variable>
#include <future>
#include <mutex>
#include <stdexcept>

#include "Benchmarks/Floors/ScanFloor.h"
#include "Benchmarks/Measuring.h"
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

constexpr std::size_t files = 10'000;
constexpr int rounds = 5, warmUp = 1;

/** Milliseconds from the start of a scan to its end; what is checked once a day is no part of it. */
double millisecondsOfScan(const std::shared_ptr<SqliteMediaLibrary>& library,
                          const std::filesystem::path& music, std::uint64_t filesToRead) {
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
    if (last.found != files || last.read != filesToRead)
        throw std::runtime_error("the scan didn't read what it should");
    return taken;
}

struct ScanTimes {
    Pair first, again;
};

ScanTimes measureScans(const std::filesystem::path& music) {
    std::vector<double> ours, floor, oursAgain, floorAgain;
    for (int round = -warmUp; round < rounds; ++round) {
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
        const double first = millisecondsOfScan(library, music, files);
        BackgroundWork::waitUntilIdle(std::chrono::seconds(30));
        const double second = millisecondsOfScan(library, music, 0);
        if (round < 0) continue;
        ours.push_back(first);
        floor.push_back(floorFirst);
        oursAgain.push_back(second);
        floorAgain.push_back(floorSecond);
    }
    return {{median(ours), median(floor)}, {median(oursAgain), median(floorAgain)}};
}

bool showsSongs(HelmoApplication& helmo) {
    const auto tabs = helmo.rootController().browserViewController()->tabs();
    const auto songs = std::dynamic_pointer_cast<ZRNSongsViewController>(tabs->selectedViewController());
    return songs && !songs->tableView()->indexPathsForVisibleRows().empty();
}

/** Milliseconds from helmo's opening an empty library, which starts the scan, to the end of the frame that
   shows the first songs. */
double millisecondsToFirstRows(const std::filesystem::path& music) {
    const TemporaryFolder folder;
    CommandLine line;
    line.headless = line.realtime = true;
    line.data = folder.path();
    line.musicFolders = {music};
    line.screen = ScreenSize{800, 480, 1};
    HelmoApplication helmo(line);
    return milliseconds([&] {
        if (!helmo.openHeadless()) throw std::runtime_error("helmo can't be opened");
        const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        for (bool isShown = false; !isShown;) {
            helmo.runLoop().runDue();
            if (helmo.runLoop().wantsFrames()) helmo.runLoop().fireFrame();
            isShown = showsSongs(helmo);
            helmo.drawFrame();
            if (std::chrono::steady_clock::now() > giveUp) throw std::runtime_error("no songs are shown");
        }
    });
}

}  // namespace

Figures measureScan() {
    const auto music = scanMusic(files);
    const auto [first, again] = measureScans(music);
    const auto tracksPerSecond = [](double taken) { return static_cast<double>(files) / taken * 1000; };
    std::vector<double> rows;
    for (int round = 0; round < rounds; ++round) rows.push_back(millisecondsToFirstRows(music));
    return {Figure::ratio("scan_rate", 0.7, tracksPerSecond(first.ours), tracksPerSecond(first.floor),
                          "tracks/s", Figure::Limit::AtLeast),
            Figure::plain("scan_first_rows_ms", 150, median(rows), 0, "ms"),
            Figure::ratio("rescan", 2, again.ours, again.floor, "ms")};
}

}  // namespace helmo::benchmarks
