#include "Tests/Journeys/JourneyFixture.h"

namespace {

class AudiobookTest : public JourneyFixture {
protected:
    void openBook() {
        start({"--data", (_home / "data").string()});
        set("tabs", {"audiobooks"});
        tap("Saga");
    }
    bool showsWhatRemains() {
        return !nodes([](const Json& node) { return node.value("text", "").ends_with(" left"); }).empty();
    }
};

TEST_F(AudiobookTest, BookGoesOnTheNextDayWhereItWasLeft) {
    std::filesystem::create_directories(_music / "Audiobooks" / "Saga");
    addSong("Audiobooks/Saga/01 - Harbour.wav", 120);
    openBook();
    EXPECT_FALSE(showsWhatRemains());
    tap("Part 1 of 1");
    advance(40);
    const double heard = player()["elapsed"];
    ASSERT_GT(heard, 40);
    back();
    EXPECT_TRUE(showsWhatRemains()) << "the list that was behind it";
    EXPECT_EQ(_helmo->finish(), 0);

    openBook();
    EXPECT_TRUE(showsWhatRemains());
    tap("Part 1 of 1");
    EXPECT_NEAR(player()["elapsed"].get<double>(), heard + 2, 3);
}

}  // namespace
