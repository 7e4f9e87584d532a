#include <cstring>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>

#include <sqlite3.h>

#include "Tests/Journeys/JourneyFixture.h"

namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Texts = std::vector<std::string>;

/** What changes on disk shows up under the driver's hand, who touches nothing. */
class WatchingTest : public JourneyFixture {
protected:
    fs::path album() const { return _music / "Harbour Nights"; }
    fs::path data() const { return _home / "data"; }
    void makeAlbum(const fs::path& folder) {
        fs::create_directories(folder);
        for (const char* song : {"1 - One.wav", "2 - Two.wav", "3 - Three.wav", "4 - Four.wav"})
            fs::copy_file(_music / "Driftwood.wav", folder / song);
        std::ofstream(_music / "Evening.m3u") << "Harbour Nights/2 - Two.wav\namber.wav\n";
    }
    void startWatching(const std::string& mode = "touch") {
        start({"--data", data().string(), "--mode", mode, "--screen", "800x480"});
        set("tabs", {"songs", "albums", "playlists"});
    }
    /** Persistent IDs in the library, of tracks and playlists, by title. */
    std::map<std::string, std::string> identities() const {
        std::map<std::string, std::string> found;
        sqlite3* database = nullptr;
        sqlite3_open((data() / "library.sqlite").c_str(), &database);
        const auto take = [](void* all, int, char** values, char**) {
            (*static_cast<std::map<std::string, std::string>*>(all))[values[0]] = values[1];
            return 0;
        };
        sqlite3_exec(database, "SELECT title, pid FROM track UNION ALL SELECT name, pid FROM playlist", take,
                     &found, nullptr);
        sqlite3_close(database);
        return found;
    }
    Texts titlesOfList() {
        Texts result;
        const Json rows = perform({{"do", "rows"}})["rows"];
        for (const Json& row : rows)
            if (row["title"] != "Shuffle") result.push_back(row["title"]);
        return result;
    }
    /** The uppermost title on view, and where it stands. */
    std::pair<std::string, double> firstOnView() {
        std::pair<std::string, double> first{"", 1e9};
        for (const Json& title :
             nodes([](const Json& node) { return node.value("text", "").starts_with("Song "); }))
            if (const double y = title["frame"][1]; y < first.second) first = {title["text"], y};
        return first;
    }
    /** The focused row's title. */
    std::string focusedSong() { return focused().value("text", "").substr(0, std::strlen("Song 100")); }
    /** Pulls out and plugs in the folder that an open list shows, and plays on. */
    void pullOutAndPlugIn(const std::function<void()>& pullOut, const std::function<void()>& plugIn) {
        startWatching();
        const auto before = identities();
        tap("Albums");
        tap("Harbour Nights");
        ASSERT_THAT(titlesOfList(), ElementsAre("One", "Two", "Three", "Four"));
        tap("Two");
        ASSERT_EQ(player()["item"]["title"], "Two");
        back();

        pullOut();
        advance(2);
        EXPECT_THAT(titlesOfList(), IsEmpty());
        EXPECT_EQ(player()["item"]["title"], "Two");
        EXPECT_EQ(player()["state"], "playing") << "it is played to its end";
        advance(20);
        EXPECT_EQ(player()["item"]["title"], "Three") << "it was made ready before";
        EXPECT_TRUE(isOnDisplay("Song skipped"));
        EXPECT_TRUE(isOnDisplay("“Four” can’t be played."));
        EXPECT_THAT(_helmo->log(), Contains("not played: Four: no longer in the library"));
        advance(20);
        EXPECT_EQ(player()["state"], "stopped");
        advance(8);

        plugIn();
        advance(2);
        EXPECT_THAT(titlesOfList(), ElementsAre("One", "Two", "Three", "Four"));
        tap("Three");
        EXPECT_EQ(player()["item"]["title"], "Three");
        EXPECT_EQ(player()["state"], "playing");
        back();
        back();
        EXPECT_THAT(titlesOfList(), Contains("Harbour Nights"));
        EXPECT_EQ(identities(), before);
        tap("Playlists");
        tap("Evening");
        EXPECT_THAT(titlesOfList(), ElementsAre("Two", "Amber Road"));
    }
};

TEST_F(WatchingTest, FolderThatGoesAndComesBackTakesItsSongsAlong) {
    makeAlbum(album());
    pullOutAndPlugIn([&] { fs::rename(album(), _home / "away"); },
                     [&] { fs::rename(_home / "away", album()); });
}

TEST_F(WatchingTest, MediumThatIsPulledOutAndPluggedInTakesItsSongsAlong) {
    makeAlbum(_home / "stick");
    fs::create_directories(album());
    const auto plugIn = [&] {
        return ::mount((_home / "stick").c_str(), album().c_str(), nullptr, MS_BIND, nullptr) == 0;
    };
    if (::unshare(CLONE_NEWNS) != 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        !plugIn())
        GTEST_SKIP() << "mounting isn't allowed here";
    pullOutAndPlugIn([&] { EXPECT_EQ(::umount(album().c_str()), 0); }, [&] { EXPECT_TRUE(plugIn()); });
    _helmo.reset();
    ::umount2(album().c_str(), MNT_DETACH);
}

TEST_F(WatchingTest, ListKeepsItsPlaceAndTheKnobItsRowWhileSongsComeAndGo) {
    for (int song = 100; song < 160; ++song) addSong("Song " + std::to_string(song) + ".wav", 1);
    startWatching("knob");
    openSongs();
    turnTo("Song 100");
    turn(30);
    ASSERT_EQ(focusedSong(), "Song 130");
    const auto place = firstOnView();
    const auto rows = titlesOfList();
    ASSERT_THAT(rows, Not(Contains("Song 110")));

    for (const char* added : {"Song 090.wav", "Song 105b.wav", "Aa.wav"}) addSong(added, 1);
    fs::remove(_music / "Song 108.wav");
    advance(2);
    EXPECT_EQ(firstOnView(), place);
    EXPECT_EQ(titlesOfList(), rows);
    EXPECT_EQ(focusedSong(), "Song 130");

    fs::remove(_music / "Song 130.wav");
    advance(2);
    EXPECT_EQ(firstOnView(), place);
    EXPECT_EQ(focusedSong(), "Song 131") << "the next one is in its place";
    fs::remove(_music / (place.first + ".wav"));
    advance(2);
    EXPECT_EQ(firstOnView().second, place.second);
    EXPECT_EQ(focusedSong(), "Song 131");
    turn(1);
    EXPECT_EQ(focusedSong(), "Song 132");
    turn(-20);
    advance(1);
    EXPECT_EQ(focusedSong(), "Song 111") << "no row is passed over or met twice";
}

}  // namespace
