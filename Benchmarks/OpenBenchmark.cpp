#include <algorithm>
#include <map>
#include <stdexcept>

#include "Benchmarks/BenchmarkApplication.h"
#include "Benchmarks/Floors/ListRows.h"
#include "Benchmarks/FrameRecorder.h"
#include "Benchmarks/Measuring.h"
#include "Benchmarks/MillionSongsFolder.h"
#include "Benchmarks/OpenedLists.h"
#include "Benchmarks/Suite.h"
#include "Platform/LibraryKit/QueryTableViewController.h"
#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace helmo::benchmarks {

using namespace zornic;

namespace {

constexpr int rounds = 15, warmUp = 2;
constexpr double limit = 3;
/** In which covers, counts and lengths come in. */
constexpr Seconds afterwards{1.5};

/** helmo over a million songs, where one list is opened again and again. */
class OpeningHelmo {
public:
    explicit OpeningHelmo(OpenedList list) : _application(millionSongsFolder()), _list(std::move(list)) {
        if (_list.row.empty()) return;
        _application.arrangeTabs({_list.tab});
        _row = static_cast<std::uint64_t>(ListRows(millionSongsDatabase(), _list.row).count());
    }
    /** Milliseconds from the tap to the frame that shows the list, of which nothing was read since the
       library last changed. */
    double millisecondsToOpen() { return _list.row.empty() ? openTab() : openRow(); }
    double longestFrame() const { return _application.longestFrame(); }
    BareFrame frame() {
        _application.time().settle();
        return recordedFrame(_application.window(), BareFrame::wholeDisplay);
    }
    int rowsOnScreen() {
        return static_cast<int>(_application.frontTable().indexPathsForVisibleRows().size());
    }
    std::uint64_t rowsInAll() {
        auto& table = _application.frontTable();
        std::uint64_t rows = 0;
        for (std::uint64_t section = 0; section < table.numberOfSections(); ++section)
            rows += table.numberOfRowsInSection(section);
        return rows;
    }

private:
    static void changeLibrary() {
        dynamic_cast<SqliteMediaLibrary&>(*MediaLibrary::defaultLibrary()).noteChange();
    }
    /** Counting the list, which is done as soon as its tab is there, and the tap on the tab. */
    double openTab() {
        _application.arrangeTabs({"brivomix"});
        changeLibrary();
        _application.time().settle();
        const double counting = _query ? milliseconds([&] { count(*_query); }) : 0;
        // A screen that was never seen, from an empty category.
        _application.arrangeTabs({"brivomix", _list.tab});
        const double opening = measured(_application.tabPoint(_list.screen));
        _query = shownQuery().copy();
        return counting + opening;
    }
    static void count(const MediaQuery& query) {
        if (query.groupingType() == MediaGrouping::Title)
            query._countOfItems();
        else
            query._countOfCollections();
    }
    MediaQuery& shownQuery() {
        const auto screen = _application.browser().tabs()->selectedViewController();
        if (const auto list = std::dynamic_pointer_cast<ZRN_OLD_TableViewController>(screen))
            return *list->query();
        return *dynamic_cast<QueryTableViewController&>(*screen).queryDataSource()->query();
    }
    double openRow() {
        _application.browser().popToViewController(_application.browser().tabs(), false);
        changeLibrary();
        _application.time().settle();
        auto& screen =
            dynamic_cast<QueryTableViewController&>(*_application.browser().tabs()->selectedViewController());
        auto& table = *screen.tableView();
        const auto row = screen.indexPathForDataSourceIndex(_row);
        table.scrollToRowAtIndexPath(row, true, false);
        _application.time().settle();
        return measured(table.convertToWindow(table.rectForRowAtIndexPath(row)).center());
    }
    double measured(Point tap) {
        const double milliseconds = _application.millisecondsOfTapToRest(tap);
        _application.millisecondsOfFrames(afterwards);
        return milliseconds;
    }

    BenchmarkApplication _application;
    const OpenedList _list;
    std::uint64_t _row = 0;
    std::shared_ptr<MediaQuery> _query;
};

/** Of each list that was measured, by name. */
std::map<std::string, double> longestFrames;

Figure measure(const OpenedList& list) {
    OpeningHelmo helmo(list);
    ListRows floor(millionSongsDatabase(), list.count, list.rows);
    helmo.millisecondsToOpen();
    if (helmo.rowsInAll() < static_cast<std::uint64_t>(floor.count()))
        throw std::runtime_error("open_" + list.name + ": the list doesn't show what it should");
    const int rowsOnScreen = helmo.rowsOnScreen();
    const BareFrame frame = helmo.frame();
    const Surface pixels(BareFrame::wholeDisplay.width, BareFrame::wholeDisplay.height);
    const auto [ours, bare] = inTurns(
        rounds, warmUp, [&] { return helmo.millisecondsToOpen(); },
        [&] {
            return milliseconds([&] {
                floor.count();
                floor.read(rowsOnScreen);
                frame.draw(pixels);
            });
        });
    longestFrames[list.name] = helmo.longestFrame();
    return Figure::ratio("open_" + list.name, limit, ours, bare, "ms");
}

Figures measureLongestFrame() {
    double longest = 0;
    for (const std::string& name : openedLists()) {
        if (!longestFrames.contains(name)) measure(openedList(millionSongsDatabase(), name));
        longest = std::max(longest, longestFrames[name]);
    }
    return {Figure::longestFrame("open_frame_ms", longest)};
}

}  // namespace

std::vector<Benchmark> openBenchmarks() {
    std::vector<Benchmark> benchmarks;
    for (const std::string& name : openedLists())
        benchmarks.push_back({{"open_" + name},
                              [name] { return Figures{measure(openedList(millionSongsDatabase(), name))}; }});
    benchmarks.push_back({{"open_frame_ms"}, measureLongestFrame});
    return benchmarks;
}

}  // namespace helmo::benchmarks
