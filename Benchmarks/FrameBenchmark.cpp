#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "Benchmarks/BenchmarkApplication.h"
#include "Benchmarks/Floors/BareText.h"
#include "Benchmarks/FrameLibrary.h"
#include "Benchmarks/FrameRecorder.h"
#include "Benchmarks/Measuring.h"
#include "Benchmarks/Suite.h"
#include "Platform/LibraryKit/PlayerStrings.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"

namespace helmo::benchmarks {

using zornic::Rect;
using zornic::Seconds;

namespace {

constexpr int rounds = 300, warmUp = 30;
constexpr double frameLimit = 2, tickLimit = 3;
/** Where Now Playing has its progress, and the two times in it. */
constexpr BareFrame::Box strip{12, 417, 776, 13};
constexpr double timeSize = 12, elapsedCentre = 38, remainingCentre = 762, timeBaseline = 428;
constexpr zornic::Point firstRow{300, 66};

/** The greatest difference, of 255, that the two have on average in any square of eight pixels: letters may
   stand a part of a pixel elsewhere, but nothing may be missing. */
double difference(const Surface& one, const Surface& other) {
    constexpr int side = 8;
    double most = 0;
    for (int top = 0; top + side <= one.height(); top += side)
        for (int left = 0; left + side <= one.width(); left += side)
            for (int channel = 0; channel < 3; ++channel) {
                int sum = 0;
                for (int y = top; y < top + side; ++y)
                    for (int x = left; x < left + side; ++x)
                        sum += one.pixels()[y * one.stride() + x * 4 + channel] -
                               other.pixels()[y * other.stride() + x * 4 + channel];
                most = std::max(most, std::abs(sum) / static_cast<double>(side * side));
            }
    return most;
}

/** Throws unless `floor` shows what the display shows. */
void expectSamePicture(BenchmarkApplication& application, const Surface& floor, const std::string& name) {
    constexpr double mostDifference = 32;
    const TemporaryFolder folder;
    const auto file = folder.path() / "display.png";
    application.helmo().writeScreenshot(file.string());
    const Surface ours(cairo_image_surface_create_from_png(file.c_str()));
    if (!ours || difference(ours, floor) > mostDifference)
        throw std::runtime_error(name + ": the floor shows something else");
}

Figure measureFrame(BenchmarkApplication& application, const char* name) {
    const BareFrame frame = recordedFrame(application.window(), BareFrame::wholeDisplay);
    const Surface floor(BareFrame::wholeDisplay.width, BareFrame::wholeDisplay.height);
    const auto drawFloor = [&] { return milliseconds([&] { frame.draw(floor); }); };
    drawFloor();
    expectSamePicture(application, floor, name);
    const auto drawOurs = [&] {
        application.window().addDamage(application.window().bounds());
        return milliseconds([&] { application.helmo().drawFrame(); });
    };
    const auto [ours, bare] = inTurns(rounds, warmUp, drawOurs, drawFloor);
    return Figure::ratio(name, frameLimit, ours, bare, "ms");
}

/** One second passes: from its timer to the end of the frame that shows it. */
double millisecondsOfTick(BenchmarkApplication& application) {
    auto& helmo = application.helmo();
    helmo.virtualClock()->moveTo(helmo.runLoop().now() + std::chrono::seconds(1));
    return milliseconds([&] {
        helmo.runLoop().runDue();
        helmo.drawFrame();
    });
}

Figure measureTick(BenchmarkApplication& application) {
    BareFrame frame = recordedFrame(application.window(), strip);
    std::erase_if(frame.marks(),
                  [](const auto& mark) { return std::holds_alternative<BareFrame::Text>(mark); });
    const Surface floor(BareFrame::wholeDisplay.width, BareFrame::wholeDisplay.height);
    const BareText text(timeSize);
    int second = 0;
    const auto drawFloor = [&] {
        ++second;
        return milliseconds([&] {
            const auto context = BareFrame::clippedContext(floor, strip);
            frame.draw(context.get());
            text.draw(context.get(), zornic::progressString(second, zornic::ProgressKind::Time),
                      elapsedCentre, timeBaseline);
            text.draw(context.get(), zornic::progressString(second - 3600, zornic::ProgressKind::Remaining),
                      remainingCentre, timeBaseline);
        });
    };
    const auto [ours, bare] = inTurns(
        rounds, warmUp, [&] { return millisecondsOfTick(application); }, drawFloor);
    return Figure::ratio("tick_now_playing", tickLimit, ours, bare, "ms");
}

}  // namespace

Figures measureFrames() {
    const FrameLibrary library(4);
    BenchmarkApplication application(library.data(), {library.music()});
    Figures figures;
    application.millisecondsOfTap(application.tabPoint(zornic::ZRNSongsViewControllerIdentifier));
    application.time().advance(Seconds(2));
    figures.push_back(measureFrame(application, "frame_songs"));
    application.millisecondsOfTap(firstRow);
    application.time().advance(Seconds(5));
    figures.push_back(measureFrame(application, "frame_now_playing"));
    figures.push_back(measureTick(application));
    return figures;
}

}  // namespace helmo::benchmarks
