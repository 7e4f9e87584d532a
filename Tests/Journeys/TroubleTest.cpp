#include <fstream>

#include <sqlite3.h>

#include "Tests/Journeys/JourneyFixture.h"
#include "Tests/Support/DiskTrouble.h"

namespace {

namespace fs = std::filesystem;
using helmo::DiskTrouble::LimitedFiles;
using helmo::DiskTrouble::SmallDisk;
using testing::SizeIs;

/** What the driver sees when the disk, the library or the music isn't as it should be: music all the same. */
class TroubleTest : public JourneyFixture {
protected:
    fs::path data() const { return _home / "data"; }
    fs::path library() const { return data() / "library.sqlite"; }
    void startWithData(const std::string& mode = "touch", std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"--data", data().string(), "--mode", mode, "--screen", "800x720"});
        start(std::move(more));
        set("tabs", {"songs"});
    }
    void makeLibrary() {
        startWithData();
        perform({{"do", "quit"}});
        EXPECT_EQ(_helmo->finish(), 0);
    }
    /** A notice comes and goes by itself, once; then there are so many songs, and they play. */
    void expectNotice(const std::string& title, const std::string& message, std::size_t songs = 10) {
        advance(2);
        EXPECT_TRUE(isOnDisplay(title)) << title;
        EXPECT_TRUE(isOnDisplay(message)) << message;
        advance(7);
        EXPECT_FALSE(isOnDisplay(title)) << "it goes by itself";
        advance(30);
        EXPECT_FALSE(isOnDisplay(title)) << "and is not said again";
        ASSERT_THAT(titles(), SizeIs(songs));
        tap(titles()[3]);
        EXPECT_EQ(player()["state"], "playing");
    }
};

TEST_F(TroubleTest, DamagedLibraryIsRebuiltAndTheNoticeGoesByTouchAndKnob) {
    for (const char* mode : {"touch", "knob"}) {
        makeLibrary();
        std::ofstream(library(), std::ios::trunc) << std::string(50'000, 'x');
        startWithData(mode);
        advance(2);
        ASSERT_TRUE(isOnDisplay("Rebuilding the library"));
        EXPECT_TRUE(isOnDisplay("It was damaged. Your songs come back as they are found."));
        if (mode == std::string("touch")) {
            tap("OK");
        } else {
            EXPECT_EQ(focused().value("text", ""), "OK");
            press();
        }
        EXPECT_FALSE(isOnDisplay("Rebuilding the library"));
        EXPECT_THAT(titles(), SizeIs(10));
        advance(400);
        EXPECT_FALSE(isOnDisplay("Rebuilding the library"));
    }
    startWithData();
    advance(2);
    EXPECT_FALSE(isOnDisplay("Rebuilding the library")) << "the new one is sound";
}

TEST_F(TroubleTest, DamageFoundWhileRunningRebuildsTheLibraryUnderTheDriversHand) {
    startWithData();
    ASSERT_THAT(titles(), SizeIs(10));
    tap(titles()[3]);
    const auto playing = player()["item"];
    back();
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(library().c_str(), &other), SQLITE_OK);
    sqlite3_exec(other, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    std::fstream file(library(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(fs::file_size(library()) - 4096, 'x') << std::flush;
    set("sortByArtist", true);
    advance(2);
    EXPECT_TRUE(isOnDisplay("Rebuilding the library"));
    advance(7);
    EXPECT_THAT(titles(), SizeIs(10));
    EXPECT_EQ(player()["item"], playing);
    EXPECT_EQ(player()["state"], "playing");
}

TEST_F(TroubleTest, LibraryThatAnotherProgramLocksIsReplacedForThisRun) {
    makeLibrary();
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(library().c_str(), &other), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(other, "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr),
        SQLITE_OK);
    startWithData();
    expectNotice("Temporary library",
                 "Another program is using yours. Your music can be played all the same.");
    sqlite3_close(other);
    EXPECT_EQ(_helmo->finish(), 0);
    EXPECT_TRUE(fs::is_empty(_home / "tmp")) << "nothing is left behind";
}

TEST_F(TroubleTest, WithoutAnyPlaceForTheLibraryThereIsMusic) {
    std::ofstream(data()) << "no folder";
    const LimitedFiles full(0);
    startWithData();
    expectNotice("Temporary library", "Yours can’t be opened. Your music can be played all the same.");
    set("sortByArtist", true);  // can't be kept, which is no reason to end
    EXPECT_EQ(settings()["sortByArtist"], true);
}

TEST_F(TroubleTest, ReadOnlyDiskShowsAndPlaysWhatIsInTheLibrary) {
    const SmallDisk disk(data(), 4096);
    if (!disk.isMounted()) GTEST_SKIP() << "mounting is not permitted here";
    fs::rename(_music / "amber.wav", _home / "amber.wav");
    makeLibrary();
    fs::rename(_home / "amber.wav", _music / "amber.wav");
    ASSERT_TRUE(disk.makeReadOnly());
    startWithData();
    expectNotice("New music can’t be added", "The library can’t be changed. What is in it can be played.", 9);
}

TEST_F(TroubleTest, FullDiskIsToldAndWhatDidNotFitComesWhenThereIsRoom) {
    const SmallDisk disk(data(), 2048);
    if (!disk.isMounted()) GTEST_SKIP() << "mounting is not permitted here";
    const auto away = _home / "away";
    fs::create_directory(away);
    for (const char* file : {"amber.wav", "or.wav"}) fs::rename(_music / file, away / file);
    makeLibrary();
    for (const char* file : {"amber.wav", "or.wav"}) fs::rename(away / file, _music / file);
    disk.fill(48);
    startWithData();
    expectNotice("New music can’t be added", "The storage is full. What is in the library can be played.", 8);
    back();
    disk.makeRoom();
    advance(301);
    EXPECT_THAT(titles(), SizeIs(10));
}

TEST_F(TroubleTest, MediumThatIsPulledOutWhileASongPlaysIsTold) {
    addSong("An hour.wav", 3600);
    start({"--realtime"});
    openSongs();
    tap("An hour");
    ASSERT_EQ(player()["state"], "playing");
    for (const auto& file : fs::directory_iterator(_music)) fs::resize_file(file, 0);
    fs::remove_all(_music);
    for (int look = 0; look < 40 && !isOnDisplay("Song skipped"); ++look) advance(0.25);
    EXPECT_TRUE(isOnDisplay("Song skipped"));
    // How many have failed by then is a matter of time.
    EXPECT_FALSE(
        nodes([](const Json& node) { return node.value("text", "").ends_with("can’t be played."); }).empty());
    for (int look = 0; look < 40 && player()["state"] != "stopped"; ++look) advance(0.25);
    EXPECT_EQ(player()["state"], "stopped");
    back();
    for (int look = 0; look < 40 && !titles().empty(); ++look) advance(0.25);
    EXPECT_TRUE(titles().empty());
}

TEST_F(TroubleTest, MusicFolderThatIsNotThereIsNamed) {
    fs::rename(_music, _home / "away");
    start();
    advance(2);
    EXPECT_TRUE(isOnDisplay("Music not found"));
    EXPECT_TRUE(isOnDisplay("The folder “music of mine” can’t be reached."));
    back();
    EXPECT_FALSE(isOnDisplay("Music not found"));
    EXPECT_TRUE(isOnDisplay("Nothing here yet"));
}

}  // namespace
