#include "Benchmarks/BenchmarkApplication.h"

#include <stdexcept>

#include "Benchmarks/Measuring.h"

namespace helmo::benchmarks {

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

double BenchmarkApplication::millisecondsOfTap(zornic::Point point) {
    window().touchDown(point);
    _time.settle();
    return milliseconds([&] {
        window().touchUp(point);
        _helmo.runLoop().runDue();
        _helmo.drawFrame();
    });
}

}  // namespace helmo::benchmarks
