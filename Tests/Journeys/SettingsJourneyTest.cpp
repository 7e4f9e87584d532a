#include <fstream>

#include "Tests/Journeys/JourneyFixture.h"

namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::Not;

class SettingsJourneyTest : public JourneyFixture {
protected:
    std::vector<std::string> tabs() {
        std::vector<std::string> result;
        const Json all = perform({{"do", "tabs"}})["tabs"];
        for (const Json& tab : all) result.push_back(tab["title"]);
        return result;
    }
};

TEST_F(SettingsJourneyTest, ListModeAndTabsFollowTheSettingsAtOnce) {
    start({"--screen", "800x720"});
    openSongs();
    const auto byTitle = titles();
    ASSERT_EQ(byTitle.size(), 10u);
    set("sortByArtist", true);
    const auto byArtist = titles();
    EXPECT_NE(byArtist, byTitle);
    EXPECT_TRUE(std::ranges::is_permutation(byArtist, byTitle));
    const auto place = [&](const char* title) { return std::ranges::find(byArtist, title); };
    EXPECT_LT(place("The Breakwater"), place("Café an der Brücke")) << "Ilka before Jörg";
    EXPECT_LT(place("Café an der Brücke"), place("Amber Road")) << "Jörg before Zora";
    set("sortByArtist", false);
    EXPECT_EQ(titles(), byTitle);

    const auto focusedNodes = [&] {
        return nodes([](const Json& node) { return node.value("focused", false); });
    };
    EXPECT_THAT(focusedNodes(), IsEmpty());
    set("uiMode", 2);
    EXPECT_EQ(settings()["uiMode"], 2);
    focused();
    set("uiMode", 0);
    EXPECT_THAT(focusedNodes(), IsEmpty());

    ASSERT_THAT(tabs(), testing::Contains("Songs"));
    set("tabs", {"playlists", "artists"});
    EXPECT_THAT(tabs(), Not(testing::Contains("Songs")));
    EXPECT_FALSE(isOnDisplay("Amber Road")) << "its screen went with it";
    set("tabs", {"brivomix"});
    EXPECT_THAT(tabs(), testing::ElementsAre("Brivo"));
    set("brivo", false);
    EXPECT_THAT(tabs(), testing::AllOf(testing::Contains("Songs"), Not(testing::Contains("Brivo"))))
        << "a display without tabs is of no use";
    EXPECT_EQ(settings()["tabs"], Json({"brivomix"})) << "what was chosen is kept";
    set("brivo", true);
    EXPECT_THAT(tabs(), testing::ElementsAre("Brivo"));
    set("tabs", {"songs"});
    EXPECT_THAT(tabs(), testing::ElementsAre("Songs"));
    EXPECT_EQ(titles(), byTitle);
}

TEST_F(SettingsJourneyTest, DataFolderKeepsLibraryAndChoicesFromOneRunToTheNext) {
    const fs::path data = _home / "data";
    start({"--data", data.string()});
    openSongs();
    set("sortByArtist", true);
    const auto songs = titles();
    tap(songs.front());
    tap("Shuffle off");
    EXPECT_EQ(player()["shuffle"], 1);
    const auto expected = settings();
    EXPECT_EQ(_helmo->finish(), 0);

    // A file that looks as before is not read again: what it said is remembered.
    const fs::path file = _music / "amber.wav";
    const auto written = fs::last_write_time(file);
    std::ofstream(file, std::ios::in | std::ios::binary) << std::string(fs::file_size(file), '?');
    fs::last_write_time(file, written);
    start({"--data", data.string()});
    openSongs();
    EXPECT_EQ(settings(), expected);
    EXPECT_EQ(player()["shuffle"], 1);
    EXPECT_EQ(titles(), songs);
    EXPECT_EQ(_helmo->finish(), 0);
}

TEST_F(SettingsJourneyTest, WithoutADataFolderNothingIsLeftBehind) {
    start();
    openSongs();
    tap("Amber Road");
    set("sortByArtist", true);
    tap("Shuffle off");
    EXPECT_FALSE(fs::is_empty(_home / "tmp")) << "where the library was";
    EXPECT_EQ(_helmo->finish(), 0);
    EXPECT_TRUE(fs::is_empty(_home / "tmp"));
    for (const char* folder : {".config", ".local"}) EXPECT_FALSE(fs::exists(_home / folder)) << folder;
    start();
    EXPECT_EQ(settings()["sortByArtist"], false);
    EXPECT_EQ(player()["shuffle"], 0);
}

}  // namespace
