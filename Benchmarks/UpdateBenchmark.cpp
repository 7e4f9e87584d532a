#include "Benchmarks/BenchmarkApplication.h"
#include "Benchmarks/Measuring.h"
#include "Benchmarks/MillionSongsFolder.h"
#include "Benchmarks/Suite.h"
#include "Tools/LargeLibrary/GeneratedMusic.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"

namespace helmo::benchmarks {

using namespace zornic;

namespace {

constexpr int rounds = 5, changes = 6;
/** Everything that follows a change is over by then. */
constexpr Seconds afterwards{0.5};

/** helmo with all its tabs and the list of songs on view, whose library changes. */
class ChangingHelmo {
public:
    explicit ChangingHelmo(const std::filesystem::path& data)
        : _application(data), _database(large::databaseIn(data), Database::Access::ReadWrite) {
        // Tracks of a generated library have folders that are not there: this one is none of them.
        _database.run({"INSERT INTO folder (id, path) SELECT max(folder_id) + 1, ? FROM track", {folder}});
        _application.arrangeTabs(SettingsValues().tabs);
        _application.millisecondsOfTap(_application.tabPoint(ZRNSongsViewControllerIdentifier));
        auto& table = _application.frontTable();
        table.scrollToRowAtIndexPath(IndexPath::forRow(0, table.numberOfSections() / 2), true, false);
        _application.time().settle();
    }
    ~ChangingHelmo() {
        remove();
        _database.run({"DELETE FROM folder WHERE path = ?", {folder}});
    }
    /** Milliseconds that it takes to store a track, or to remove it, and to show what is there now. */
    double millisecondsOfChange() {
        const double storing = milliseconds([&] {
            if (_isAdded)
                remove();
            else
                library().write([](TrackStore& store) {
                    store.store({folder, "added.flac", 1, 1}, large::GeneratedMusic().next());
                });
        });
        _isAdded = !_isAdded;
        const double telling = milliseconds([&] { library().noteChange(); });
        return storing + telling + _application.millisecondsOfFrames(afterwards);
    }
    double longestFrame() const { return _application.longestFrame(); }

private:
    static constexpr const char* folder = "/added";
    static SqliteMediaLibrary& library() {
        return dynamic_cast<SqliteMediaLibrary&>(*MediaLibrary::defaultLibrary());
    }
    void remove() {
        _database.run(
            {"DELETE FROM track WHERE folder_id = (SELECT id FROM folder WHERE path = ?)", {folder}});
    }

    BenchmarkApplication _application;
    Database _database;
    bool _isAdded = false;
};

double measure(const std::filesystem::path& folder, std::vector<double>& times) {
    ChangingHelmo helmo(folder);
    for (int change = 0; change < changes; ++change) times.push_back(helmo.millisecondsOfChange());
    return helmo.longestFrame();
}

}  // namespace

Figures measureUpdate() {
    std::vector<double> large, small, longest;
    for (int round = 0; round < rounds; ++round) {
        longest.push_back(measure(millionSongsFolder(), large));
        measure(tenThousandSongsFolder(), small);
    }
    return {Figure::ratio("update_1m", 2, median(large), median(small), "ms"),
            Figure::longestFrame("update_1m_frame_ms", median(longest))};
}

}  // namespace helmo::benchmarks
