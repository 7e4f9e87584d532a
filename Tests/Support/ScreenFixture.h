#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Foundation/RunLoop.h"
#include "Platform/LibraryKit/ApplicationDefaults.h"
#include "Platform/Media/AVController.h"
#include "Platform/Toolkit/Window.h"
#include "Tests/Support/FakeMediaLibrary.h"
#include "Utilities/ZRNShared.h"

namespace zornic {

/** Settings that write down what is stored. */
class FakeDefaults final : public ApplicationDefaults {
public:
    bool isSortByArtistEnabled() const override { return sortByArtist; }
    bool isGroupByAlbumArtistEnabled() const override { return groupByAlbumArtist; }
    void setShuffleType(std::int64_t type) override { store("shuffle", type); }
    void setRepeatType(std::int64_t type) override { store("repeat", type); }

    bool sortByArtist = false, groupByAlbumArtist = false;
    std::vector<std::pair<std::string, std::int64_t>> stored;
    /** Runs when something is about to be stored. */
    std::function<void()> willStore;

private:
    void store(std::string name, std::int64_t type) {
        if (willStore) willStore();
        stored.emplace_back(std::move(name), type);
    }
};

/** A car's display with a window, a player of silence, a library in memory and a clock that stands still
   until told: what a screen needs to be driven as a driver would. */
class ScreenFixture {
public:
    /** `uiMode`: 0 full touch, 1 reduced touch, 2 knob. Texts and images are the real ones. */
    explicit ScreenFixture(int uiMode = 0, Size size = {800, 480}, double scale = 1) {
        setUp(uiMode, size, scale);
        // Here, so that the toolkit's own tests, which know no shared objects, need not link them.
        ZRNSetSharedDefaults(defaults);
        ZRNSetSharedAVPlayer(player);
    }
    ~ScreenFixture() {
        ZRNSetSharedAVPlayer(nullptr);
        ZRNSetSharedDefaults(nullptr);
        tearDown();
    }

    void setUIMode(int uiMode);
    /** Makes it the window's root screen and lets it appear. */
    void show(const std::shared_ptr<ViewController>& controller);
    /** Moves the clock, running what falls due, frames and background work in order; then lays out. */
    void advance(double seconds);
    /** Lays out and forgets what had to be drawn. */
    void settle() { window->takeDamage(); }
    void touchDown(const View& view);
    void touchUp(const View& view) { window->touchUp(centerOf(view)); }
    void tap(const View& view);
    void pressKnob();
    /** Adds songs called `titles`; the query of all songs, which orders them by title. */
    std::shared_ptr<MediaQuery> addSongs(const std::vector<std::string>& titles, Dictionary more = {});
    /** Plays the query's items from `index` on. */
    void play(const std::shared_ptr<MediaQuery>& query, std::uint64_t index = 0);

    ManualClock clock;
    RunLoop loop{clock};
    std::shared_ptr<Screen> screen;
    std::shared_ptr<Window> window;
    std::shared_ptr<FakeMediaLibrary> library;
    std::shared_ptr<AVController> player;
    std::shared_ptr<FakeDefaults> defaults;

private:
    void setUp(int uiMode, Size size, double scale);
    void tearDown();
    void runWhatIsDue();
    static Point centerOf(const View& view) { return view.convertToWindow(view.bounds()).center(); }
};

}  // namespace zornic
