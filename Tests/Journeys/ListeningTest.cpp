#include "Tests/Journeys/JourneyFixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const std::string songsScreen = "ZRNSongsViewController";
const std::string nowPlayingScreen = "ZRNMusicNowPlayingViewController";

/** What a driver hears, on one of the touch displays or with the knob. */
class ListeningTest : public JourneyFixture {
protected:
    void expectNowPlaying(const std::string& title, const std::string& artist, const std::string& album) {
        ASSERT_EQ(frontScreen(), nowPlayingScreen);
        for (const auto& text : {title, artist, album}) EXPECT_TRUE(isOnDisplay(text)) << text;
        EXPECT_EQ(player()["item"]["title"], title);
    }
};

class TouchListeningTest : public ListeningTest, public testing::WithParamInterface<const char*> {};

TEST_P(TouchListeningTest, DriverChoosesASongWindsForwardPausesAndComesBackToIt) {
    start({"--mode", GetParam()});
    openSongs();
    const auto songs = titles();
    ASSERT_GE(songs.size(), 3u);
    EXPECT_THAT(playingTitles(), IsEmpty());
    EXPECT_FALSE(isOnDisplay("Now Playing")) << "offered while nothing plays";
    ASSERT_EQ(songs[2], "Café an der Brücke") << "articles and accents sort as the language has it";

    tap(songs[2]);
    expectNowPlaying(songs[2], "Jörg Übel", "Größenwahn");
    EXPECT_TRUE(isOnDisplay("3 of 10"));
    const double before = player()["elapsed"];
    tapImage("HelmoFastForwardButton", 2);
    const auto after = player();
    EXPECT_GT(after["elapsed"].get<double>(), before + 2.5) << "held, it winds faster than it plays";
    EXPECT_EQ(after["item"]["title"], songs[2]) << "held, it does not skip";
    EXPECT_EQ(after["state"], "playing");

    tapImage("HelmoPauseButton");
    const auto paused = player();
    advance(3);
    EXPECT_EQ(player(), paused);
    EXPECT_EQ(paused["state"], "paused");
    back();
    EXPECT_EQ(frontScreen(), songsScreen);
    EXPECT_THAT(playingTitles(), ElementsAre(songs[2]));

    tap("Now Playing");
    expectNowPlaying(songs[2], "Jörg Übel", "Größenwahn");
    tapImage("HelmoPlayButton");
    tapImage("HelmoFastForwardButton");
    EXPECT_EQ(player()["item"]["title"], songs[3]) << "a short tap skips";
    EXPECT_EQ(player()["state"], "playing");
    tapImage("ToolkitBackChevron");
    advance(1);
    EXPECT_THAT(playingTitles(), ElementsAre(songs[3]));
}

INSTANTIATE_TEST_SUITE_P(Modes, TouchListeningTest, testing::Values("touch", "lowtouch"),
                         [](const auto& mode) { return std::string(mode.param); });

TEST_F(ListeningTest, KnobAloneDoesTheSame) {
    start({"--mode", "knob"});
    openSongs();
    turnTo("Café an der Brücke");
    press();
    expectNowPlaying("Café an der Brücke", "Jörg Übel", "Größenwahn");
    EXPECT_EQ(focused()["image"], "HelmoPauseButton");

    turn(1);
    ASSERT_EQ(focused()["image"], "HelmoFastForwardButton");
    const double before = player()["elapsed"];
    perform({{"do", "knob"}, {"press", true}, {"hold", 2}});
    EXPECT_GT(player()["elapsed"].get<double>(), before + 2.5);
    turn(-1);
    press();
    EXPECT_EQ(player()["state"], "paused");
    EXPECT_EQ(focused()["image"], "HelmoPlayButton") << "the focus stays when the picture changes";

    turn(-20);
    EXPECT_EQ(focused()["image"], "ToolkitBackChevron") << "the way back is first";
    press();
    EXPECT_EQ(frontScreen(), songsScreen);
    EXPECT_THAT(focused().value("text", ""), StartsWith("Café an der Brücke")) << "back where he came from";
    EXPECT_THAT(playingTitles(), ElementsAre("Café an der Brücke"));

    turn(-20);
    turnTo("Now Playing");
    press();
    EXPECT_EQ(frontScreen(), nowPlayingScreen);
    back();
    EXPECT_EQ(frontScreen(), songsScreen);
    focused();
}

TEST_F(ListeningTest, SongsFollowEachOtherAndNowPlayingClosesAfterTheLast) {
    start({"--screen", "800x720"});
    openSongs();
    const auto songs = titles();
    ASSERT_EQ(songs.size(), 10u) << "the whole list is in view";
    tap(songs[8]);
    const double length = player()["duration"];
    advance(length - 2);
    EXPECT_EQ(player()["item"]["title"], songs[8]);
    advance(1.5);
    EXPECT_EQ(player()["item"]["title"], songs[9]);
    EXPECT_NEAR(player()["elapsed"].get<double>(), 0.5, 0.1) << "without a gap";
    EXPECT_EQ(frontScreen(), nowPlayingScreen);
    EXPECT_TRUE(isOnDisplay(songs[9]));

    advance(player()["duration"].get<double>() + 2);
    EXPECT_EQ(player()["item"], nullptr);
    EXPECT_EQ(player()["state"], "stopped");
    EXPECT_EQ(frontScreen(), songsScreen);
    EXPECT_THAT(playingTitles(), IsEmpty());
    EXPECT_FALSE(isOnDisplay("Now Playing"));
}

TEST_F(ListeningTest, SongWhoseFileIsGoneIsSkippedAndTheDriverIsTold) {
    start();
    openSongs();
    ASSERT_TRUE(std::filesystem::remove(_music / "break.wav"));
    tap("The Breakwater");
    advance(2);
    EXPECT_TRUE(isOnDisplay("Song skipped"));
    EXPECT_TRUE(isOnDisplay("“The Breakwater” can’t be played."));
    EXPECT_EQ(player()["item"]["title"], "Café an der Brücke");
    EXPECT_EQ(player()["state"], "playing");
    advance(6);
    EXPECT_FALSE(isOnDisplay("Song skipped")) << "the notice goes by itself";
    expectNowPlaying("Café an der Brücke", "Jörg Übel", "Größenwahn");
}

TEST_F(ListeningTest, WithoutAnyFileLeftTheDriverIsBackAtTheListAndTold) {
    start();
    openSongs();
    std::filesystem::remove_all(_music);
    tap("The Breakwater");
    advance(2);
    EXPECT_TRUE(player()["item"].is_null());
    const auto told =
        nodes([](const Json& node) { return node.value("text", "").ends_with(" songs can’t be played."); });
    EXPECT_FALSE(told.empty()) << "one word for all of them";
    advance(6);
    EXPECT_EQ(frontScreen(), songsScreen);
}

}  // namespace
