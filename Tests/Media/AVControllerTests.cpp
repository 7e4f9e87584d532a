#include <set>

#include "Platform/Media/AVController.h"
#include "Tests/Media/MediaFixture.h"

namespace zornic {
namespace {

/** Five songs of a minute, A to E, and a player. */
class AVControllerTest : public MediaFixture {
protected:
    AVControllerTest() {
        for (const auto* title : {"A", "B", "C", "D", "E"})
            ids.push_back(
                library->addSong(title, "Artist", "Album", 0, {{MediaItemProperty::PlaybackDuration, 60.0}}));
        const std::pair<const char*, const char*> names[] = {
            {AVControllerItemChangedNotification, "item"},
            {AVControllerContentsChangedNotification, "contents"},
            {AVControllerPlaybackStateChangedNotification, "state"},
            {AVControllerItemFailedNotification, "failed"}};
        for (const auto& [name, text] : names)
            observations.push_back(NotificationCenter::defaultCenter().observe(
                name, player.get(), [this, text = text](const auto&) { ++posts[text]; }));
    }

    std::shared_ptr<QueryPlaybackContext> context(std::optional<std::uint64_t> start = std::nullopt,
                                                  std::int64_t shuffle = 0, bool keep = false) {
        const auto made = make<QueryPlaybackContext>(MediaQuery::songsQuery());
        made->setStartIndex(start);
        made->setShuffleType(shuffle);
        made->setKeepPlayingCurrentItemIfPossible(keep);
        return made;
    }
    void start(std::uint64_t index) {
        player->reloadWithPlaybackContext(context(index));
        posts.clear();
    }
    std::string title() const { return player->currentItem() ? player->currentItem()->mainTitle() : "none"; }
    double time() const { return player->currentTime().count(); }

    using Posts = std::map<std::string, int>;
    Posts posts;
    std::set<std::string> broken;
    std::vector<PersistentID> ids;
    const std::shared_ptr<ClockedPlaybackEngine> engine = make<ClockedPlaybackEngine>(
        [this](const auto& location) { return broken.contains(location) ? "broken" : std::string(); });
    std::shared_ptr<AVController> player = make<AVController>(engine);
    std::vector<Observation> observations;
};

TEST_F(AVControllerTest, AQueuePlaysThroughAndEnds) {
    player->reloadWithPlaybackContext(context(3));
    EXPECT_EQ(posts, (Posts{{"item", 1}, {"contents", 1}, {"state", 1}}));
    EXPECT_EQ(title(), "D");
    EXPECT_EQ(player->currentItem()->localizedPositionInPlaylistString(), "4 of 5");
    EXPECT_EQ(player->durationOfCurrentItemIfAvailable(), Seconds(60));
    posts.clear();
    pass(70);
    EXPECT_EQ(title(), "E");
    EXPECT_DOUBLE_EQ(time(), 10) << "without a gap";
    EXPECT_EQ(posts, (Posts{{"item", 1}}));
    pass(60);
    EXPECT_EQ(title(), "none");
    EXPECT_EQ(player->state(), AVPlaybackState::Stopped);
    EXPECT_EQ(posts, (Posts{{"item", 2}, {"state", 1}}));
    EXPECT_EQ(library->played, (std::vector{ids[3], ids[4]}));
    player->play();
    EXPECT_EQ(title(), "A") << "the queue is still there";

    player->reloadWithPlaybackContext(make<QueryPlaybackContext>(make<MediaQuery>(make<FakeMediaLibrary>())));
    EXPECT_EQ(title(), "none");
    EXPECT_EQ(player->playbackCount(), 0U);
}

TEST_F(AVControllerTest, RepeatDecidesWhatFollowsEvenWhenItChangesShortlyBeforeTheEnd) {
    start(4);
    pass(59);
    player->setActiveRepeatType(2);
    pass(2);
    EXPECT_EQ(title(), "A");
    pass(58);
    player->setActiveRepeatType(1);
    pass(62);
    EXPECT_EQ(title(), "A");
    EXPECT_EQ(library->played.size(), 3U);
    player->changePlaybackIndexBy(1);
    EXPECT_EQ(title(), "B") << "who skips wants another item";
    player->setActiveRepeatType(0);
    pass(60);
    EXPECT_EQ(title(), "C");
}

TEST_F(AVControllerTest, SkippingMovesInTheQueueAsItPlaysOrRests) {
    start(1);
    pass(2);
    player->changePlaybackIndexBy(-1);
    EXPECT_EQ(title(), "A");
    pass(2);
    player->changePlaybackIndexBy(-1);
    EXPECT_EQ(title(), "A");
    EXPECT_EQ(time(), 0);
    player->changePlaybackIndexBy(1);
    pass(4);
    player->changePlaybackIndexBy(-1);
    EXPECT_EQ(title(), "B") << "beyond three seconds it only restarts";
    EXPECT_EQ(time(), 0);

    player->pause();
    player->changePlaybackIndexBy(1);
    EXPECT_EQ(player->state(), AVPlaybackState::Paused);
    pass(10);
    EXPECT_EQ(time(), 0);
    player->setActiveRepeatType(2);
    player->changePlaybackIndexBy(4);
    EXPECT_EQ(title(), "B");
    player->changePlaybackIndexBy(-2);
    EXPECT_EQ(title(), "E");
    player->setActiveRepeatType(0);
    library->removeItem(ids[3]);
    player->changePlaybackIndexBy(-1);
    player->changePlaybackIndexBy(2);
    EXPECT_EQ(title(), "none");
    EXPECT_TRUE(library->played.empty());
}

TEST_F(AVControllerTest, HoldingRunsTheTimeFasterAndFaster) {
    start(0);
    pass(10);
    player->beginSeek(1);
    EXPECT_EQ(player->state(), AVPlaybackState::Seeking);
    EXPECT_TRUE(player->shouldDisplayAsPlaying());
    pass(2);
    EXPECT_DOUBLE_EQ(time(), 18);
    pass(3);
    EXPECT_DOUBLE_EQ(time(), 42);
    pass(0.5);
    EXPECT_DOUBLE_EQ(time(), 50);
    EXPECT_EQ(posts["state"], 1 + 22) << "the display is told at every step";
    player->endSeek();
    EXPECT_TRUE(player->isPlaying());
    pass(1);
    EXPECT_DOUBLE_EQ(time(), 51);

    player->pause();
    player->beginSeek(-1);
    pass(20);
    EXPECT_EQ(time(), 0);
    EXPECT_TRUE(player->isSeekingOrScrubbing());
    EXPECT_FALSE(player->shouldDisplayAsPlaying());
    player->endSeek();
    pass(5);
    EXPECT_EQ(player->state(), AVPlaybackState::Paused);
    EXPECT_EQ(time(), 0);
    player->beginSeek(1);
    player->togglePlayback(2);
    pass(1);
    player->endSeek();
    EXPECT_TRUE(player->isPlaying()) << "what was asked for while seeking counts";
}

TEST_F(AVControllerTest, RunningIntoTheEndPlaysOnAndTheReleaseSkipsNothing) {
    start(0);
    pass(55);
    player->beginSeek(1);
    pass(3.5);
    EXPECT_EQ(title(), "B");
    EXPECT_TRUE(player->isPlaying());
    EXPECT_TRUE(player->isSeekingOrScrubbing()) << "the button is still held";
    player->endSeek();
    EXPECT_FALSE(player->isSeekingOrScrubbing());
    EXPECT_DOUBLE_EQ(time(), 2.25);

    player->pause();
    player->beginSeek(1);
    pass(20);
    EXPECT_EQ(title(), "B");
    EXPECT_EQ(time(), 60);
    player->endSeek();
    EXPECT_EQ(player->state(), AVPlaybackState::Paused);
}

TEST_F(AVControllerTest, ShuffleStaysAsTheDriverHasItAndWhatWasPickedPlaysFirst) {
    player->reloadWithPlaybackContext(context(NotFound, 1));
    EXPECT_EQ(player->activeShuffleType(), 1);
    player->reloadWithPlaybackContext(context(3));
    EXPECT_EQ(player->activeShuffleType(), 1);
    EXPECT_EQ(title(), "D");
    EXPECT_EQ(player->playbackIndex(), 0U);
    player->reloadWithPlaybackContext(context());
    EXPECT_EQ(title(), "A") << "a list starts with its first item";

    start(2);
    pass(5);
    player->setActiveShuffleType(0);
    EXPECT_EQ(player->currentItem()->localizedPositionInPlaylistString(), "3 of 5");
    EXPECT_EQ(posts, (Posts{{"item", 1}, {"contents", 1}}));
    EXPECT_DOUBLE_EQ(time(), 5) << "switching doesn't interrupt";
    pass(60);
    EXPECT_EQ(title(), "D");
    player->setActiveShuffleType(1);
    std::set<std::string> rest;
    for (int song = 0; song < 4; ++song) {
        pass(60);
        rest.insert(title());
    }
    EXPECT_EQ(rest, (std::set<std::string>{"A", "B", "C", "E"}));
}

TEST_F(AVControllerTest, AnItemThatAlreadyPlaysGoesOnInItsNewQueue) {
    start(2);
    pass(20);
    player->pause();
    const auto albums = make<QueryPlaybackContext>(MediaQuery::albumsQuery()->copy());
    albums->setStartIndex(2);
    albums->setKeepPlayingCurrentItemIfPossible(true);
    player->reloadWithPlaybackContext(albums);
    EXPECT_TRUE(player->isPlaying());
    EXPECT_DOUBLE_EQ(time(), 20);
    EXPECT_EQ(player->currentMediaQuery(), albums->query());
    EXPECT_EQ(player->currentItem()->feeder(), player->feeder());

    player->reloadWithPlaybackContext(context(1, 0, true));
    EXPECT_EQ(title(), "B") << "another item was picked";
    EXPECT_EQ(time(), 0);
    pass(20);
    player->reloadWithPlaybackContext(context(std::nullopt, 0, true));
    EXPECT_EQ(title(), "B");
    EXPECT_DOUBLE_EQ(time(), 20) << "no start item: wherever it is in the queue";
    player->reloadWithPlaybackContext(context(1));
    EXPECT_EQ(time(), 0) << "not asked to go on";
}

TEST_F(AVControllerTest, ItemsThatRememberTheirPlaceStartThere) {
    library->setValue(ids[0], MediaItemProperty::BookmarkTime, 25.0);
    library->setValue(ids[1], MediaItemProperty::BookmarkTime, 25.0);
    library->setValue(ids[1], MediaItemProperty::RememberBookmarkTime, true);
    library->setValue(ids[2], MediaItemProperty::BookmarkTime, 60.0);
    library->setValue(ids[2], MediaItemProperty::RememberBookmarkTime, true);
    start(0);
    EXPECT_EQ(time(), 0);
    pass(70);
    EXPECT_DOUBLE_EQ(time(), 35);
    pass(30);
    EXPECT_EQ(title(), "C");
    EXPECT_DOUBLE_EQ(time(), 5) << "heard out: from the beginning";
}

TEST_F(AVControllerTest, WhatCannotBePlayedIsPassedOverInEitherDirection) {
    broken = {"/music/B", "/music/D"};
    start(0);
    pass(61);
    EXPECT_EQ(title(), "C") << "found out while A still played";
    EXPECT_EQ(posts["failed"], 2);
    player->changePlaybackIndexBy(-1);
    pass(1);
    EXPECT_EQ(title(), "A");
    player->changePlaybackIndexBy(1);
    pass(1);
    EXPECT_EQ(title(), "C");
    EXPECT_TRUE(player->isPlaying());
    broken.insert("/music/A");
    player->reloadWithPlaybackContext(context(0));
    pass(1);
    EXPECT_EQ(title(), "C");

    // A queue of nothing else comes to an end.
    broken = {"/music/A", "/music/B", "/music/C", "/music/D", "/music/E"};
    player->setActiveRepeatType(2);
    start(2);
    pass(600);
    EXPECT_EQ(player->state(), AVPlaybackState::Stopped);
    EXPECT_LE(posts["failed"], 10);
    // One that plays goes round and round, whatever is broken beside it.
    broken.erase("/music/A");
    start(0);
    const auto played = library->played.size();
    pass(610);
    EXPECT_EQ(title(), "A");
    EXPECT_EQ(library->played.size() - played, 10U);
}

TEST_F(AVControllerTest, WhoeverIsToldMayStopOrDropThePlayer) {
    const auto onItem = NotificationCenter::defaultCenter().observe(AVControllerItemChangedNotification,
                                                                    player.get(), [&](const auto&) {
                                                                        if (player && player->currentItem())
                                                                            player->stop();
                                                                    });
    player->reloadWithPlaybackContext(context(1));
    EXPECT_EQ(player->state(), AVPlaybackState::Stopped);
    EXPECT_FALSE(engine->isPlaying());
    const auto onContents = NotificationCenter::defaultCenter().observe(
        AVControllerContentsChangedNotification, nullptr, [&](const auto&) { player.reset(); });
    player->reloadWithPlaybackContext(context(1));
    pass(100);
    EXPECT_EQ(player, nullptr);
}

}  // namespace
}  // namespace zornic
