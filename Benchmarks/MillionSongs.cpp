#include <algorithm>
#include <stdexcept>

#include "Benchmarks/BenchmarkApplication.h"
#include "Benchmarks/Floors/MillionSongsRows.h"
#include "Benchmarks/FrameRecorder.h"
#include "Benchmarks/Measuring.h"
#include "Benchmarks/MillionSongsFolder.h"
#include "Benchmarks/Suite.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"
#include "View Controllers/ZRNSongsViewController.h"

namespace helmo::benchmarks {

using namespace zornic;

namespace {

constexpr int rounds = 41, warmUp = 5;
constexpr std::uint64_t flungRows = 10'000;

/** helmo over a million songs, with a category beside *Songs* that is empty to come from. */
class MillionSongs {
public:
    MillionSongs() : _application(millionSongsFolder()) {}

    /** Milliseconds from the tap on a list of songs that was never opened to its frame. */
    double millisecondsToOpen() {
        makeScreensAnew();
        return _application.millisecondsOfTap(_application.tabPoint(ZRNSongsViewControllerIdentifier));
    }
    /** Milliseconds until the frame that shows the list from `row` on is finished. */
    double millisecondsToJump(std::uint64_t row) {
        _application.time().settle();
        return milliseconds([&] {
            songs().tableView()->scrollToRowAtIndexPath(songs().indexPathForDataSourceIndex(row), true,
                                                        false);
            _application.helmo().drawFrame();  // as a display does once it has handled the touch
        });
    }
    /** Row cells made while the finger flings the list until it has come `rows` further. */
    std::uint64_t cellsMadeFlinging(std::uint64_t rows) {
        makeScreensAnew();
        const auto before = TableView::cellsMade();
        _application.millisecondsOfTap(_application.tabPoint(ZRNSongsViewControllerIdentifier));
        auto& table = *songs().tableView();
        const double end = static_cast<double>(rows) * table.rowHeight();
        const auto drag = toDuration(Seconds(1.0 / 60));
        const Point middle = table.convertToWindow(table.bounds()).center();
        while (table.contentOffset().y < end) {
            _application.window().touchDown({middle.x, middle.y + 120});
            for (int step = 1; step <= 6; ++step) {
                _application.time().advance(drag);
                _application.window().touchMove({middle.x, middle.y + 120 - 40.0 * step});
            }
            _application.window().touchUp({middle.x, middle.y - 120});
            _application.time().advance(Seconds(1));
        }
        return TableView::cellsMade() - before;
    }
    /** What is on the display, as a bare frame. */
    BareFrame frame() {
        _application.time().settle();
        return recordedFrame(_application.window(), BareFrame::wholeDisplay);
    }
    std::uint64_t count() { return songs().queryDataSource()->count(); }
    std::uint64_t rowsOnScreen() { return songs().tableView()->indexPathsForVisibleRows().size(); }

private:
    ZRNSongsViewController& songs() {
        return dynamic_cast<ZRNSongsViewController&>(
            *_application.browser().tabs()->selectedViewController());
    }
    /** Screens that were never seen, the empty one selected. */
    void makeScreensAnew() {
        _application.arrangeTabs({"brivomix"});
        _application.arrangeTabs({"brivomix", "songs"});
    }
    BenchmarkApplication _application;
};

/** Rows in an order that has nothing to do with theirs. */
std::vector<std::uint64_t> scatteredRows(std::uint64_t count) {
    std::vector<std::uint64_t> rows;
    for (std::uint64_t round = 0; round < rounds + warmUp; ++round)
        rows.push_back((round * 618'034 + 12'345) % (count - 20));
    return rows;
}

}  // namespace

Figures measureMillionSongs() {
    MillionSongs songs;
    MillionSongsRows floor(millionSongsDatabase());
    songs.millisecondsToOpen();
    const int rowsOnScreen = static_cast<int>(songs.rowsOnScreen());
    const BareFrame frame = songs.frame();
    const Surface floorPixels(BareFrame::wholeDisplay.width, BareFrame::wholeDisplay.height);

    const Pair open = inTurns(
        rounds, warmUp, [&] { return songs.millisecondsToOpen(); },
        [&] {
            return milliseconds([&] {
                floor.count();
                floor.rowsFrom("", rowsOnScreen);
                frame.draw(floorPixels);
            });
        });

    const auto rows = scatteredRows(songs.count());
    std::vector<std::string> keys;
    for (const auto row : rows) {
        keys.push_back(floor.keyAt(static_cast<std::int64_t>(row)));
        floor.rowsFrom(keys.back(), rowsOnScreen);  // what the disk takes is no part of either
    }
    std::size_t jumped = 0, read = 0;
    const auto readScreen = [&] {
        return milliseconds([&] {
            floor.rowsFrom(keys[read++ % keys.size()], rowsOnScreen);
            frame.draw(floorPixels);
        });
    };
    const Pair jump = inTurns(
        rounds, warmUp, [&] { return songs.millisecondsToJump(rows[jumped++ % rows.size()]); }, readScreen);

    const auto cells = static_cast<double>(songs.cellsMadeFlinging(flungRows));
    return {Figure::ratio("songs_1m_open", 3, open.ours, open.floor, "ms"),
            Figure::ratio("songs_1m_jump", 4, jump.ours, jump.floor, "ms"),
            Figure::plain("songs_1m_cells", rowsOnScreen + 4.0, cells, rowsOnScreen, "cells")};
}

}  // namespace helmo::benchmarks
