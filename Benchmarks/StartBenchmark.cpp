#include <stdexcept>

#include "Benchmarks/FrameLibrary.h"
#include "Benchmarks/Measuring.h"
#include "Benchmarks/Suite.h"
#include "Benchmarks/WindowProgram.h"

namespace helmo::benchmarks {

namespace {

constexpr int rounds = 15, warmUp = 2, albums = 1000;
constexpr double limit = 2;
constexpr auto longestStart = std::chrono::seconds(30);

double millisecondsToFirstFrame(const std::vector<std::string>& commandLine) {
    WindowProgram program(commandLine);
    const auto shown = program.nextFrame(longestStart);
    if (!shown) throw std::runtime_error(commandLine.front() + " shows no frame");
    return std::chrono::duration<double, std::milli>(*shown).count();
}

}  // namespace

Figures measureStart() {
    const FrameLibrary library(albums);
    const std::vector<std::string> helmo{HELMO_PROGRAM, "--data", library.data(), "--music", library.music()};
    const auto [ours, floor] = inTurns(
        rounds, warmUp, [&] { return millisecondsToFirstFrame(helmo); },
        [] { return millisecondsToFirstFrame({HELMO_START_PROGRAM}); });
    return {Figure::ratio("start", limit, ours, floor, "ms")};
}

}  // namespace helmo::benchmarks
