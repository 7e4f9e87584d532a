#include "Benchmarks/BenchmarkApplication.h"
#include "Benchmarks/FrameLibrary.h"
#include "Benchmarks/Suite.h"
#include "Benchmarks/WindowProgram.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"

namespace helmo::benchmarks {

namespace {

using namespace std::chrono_literals;

constexpr auto idleTime = 10s, longestStart = 30s, quiet = 2s;
constexpr zornic::Point firstRow{300, 66};

/** Frames that a headless helmo draws while its clock moves on. */
std::uint64_t framesWhileIdle(BenchmarkApplication& application) {
    application.time().advance(quiet);
    application.helmo().takeStatistics();
    application.time().advance(idleTime);
    return application.helmo().takeStatistics().frames;
}

Figure wakeUps(const FrameLibrary& library, std::uint64_t& frames) {
    WindowProgram program({HELMO_PROGRAM, "--data", library.data(), "--music", library.music()});
    program.nextFrame(longestStart);
    while (program.nextFrame(quiet)) {
    }
    const auto before = program.sleeps();
    for (const auto end = std::chrono::steady_clock::now() + idleTime;
         std::chrono::steady_clock::now() < end;)
        if (program.nextFrame(end - std::chrono::steady_clock::now())) ++frames;
    constexpr double mostWakeUps = 10;
    return Figure::plain("idle_wakeups", mostWakeUps, static_cast<double>(program.sleeps() - before), 0, "");
}

}  // namespace

Figures measureIdle() {
    const FrameLibrary library(4);
    std::uint64_t frames = 0;
    {
        BenchmarkApplication application(library.data(), {library.music()});
        application.millisecondsOfTap(application.tabPoint(zornic::ZRNSongsViewControllerIdentifier));
        frames += framesWhileIdle(application);
        application.millisecondsOfTap(firstRow);
        application.time().advance(5s);
        application.helmo().rootController().player()->pause();
        frames += framesWhileIdle(application);
    }
    const Figure wakeUpsInWindow = wakeUps(library, frames);
    return {Figure::plain("idle_frames", 0, static_cast<double>(frames), 0, ""), wakeUpsInWindow};
}

}  // namespace helmo::benchmarks
