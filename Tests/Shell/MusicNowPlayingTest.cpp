#include "Tests/Support/FakeServiceProvider.h"
#include "Tests/Support/ScreenFixture.h"
#include "View Controllers/ZRNMusicNowPlayingViewController.h"

using namespace zornic;
using Music = ZRNMusicNowPlayingViewController;

namespace {

/** An item that comes from no library. */
struct OtherItem : AVItem {
    OtherItem(bool isRadio, std::string album) : radio(isRadio), _album(std::move(album)) {}
    std::string mainTitle() const override { return "Main"; }
    std::string artist() const override { return "Whoever"; }
    std::string albumTitle() const override { return _album; }
    bool isRadioItem() const override { return radio; }
    bool isAdvertisement() const override { return !radio; }
    bool supportsRadioTrackActions() const override { return radio; }
    const bool radio;
    const std::string _album;
};

struct OneItemFeeder : AVQueueFeeder {
    explicit OneItemFeeder(std::shared_ptr<AVItem> only) : item(std::move(only)) {}
    std::uint64_t count() const override { return 1; }
    std::shared_ptr<AVItem> itemAtPosition(std::uint64_t position) override {
        return position == 0 ? item : nullptr;
    }
    bool canSkipCurrentItem() const override { return false; }
    std::uint64_t setShuffleType(std::int64_t, std::uint64_t) override { return 0; }
    std::uint64_t positionOfMediaItem(const MediaItem&) const override { return NotFound; }
    const std::shared_ptr<AVItem> item;
};

struct MusicNowPlayingTest : testing::Test, ScreenFixture {
    /** Plays `query` and presents Now Playing over an empty screen. */
    void present(const std::shared_ptr<MediaQuery>& query) {
        play(query);
        present();
    }
    void present() {
        show(root);
        music = Music::withPlayer(player, provider, false);
        root->presentViewControllerWithTransition(music->newPresentationNavigationController(),
                                                  PresentationTransition::Rise);
        advance(1);
        settle();
    }
    ZRNNowPlayingViewController& body() { return *music->nowPlayingViewController(); }
    ZRNNowPlayingView& nowPlaying() { return *body().nowPlayingView(); }
    const std::shared_ptr<ZRNButton>& left() { return body().transportControlView()->leftButton(); }
    const std::shared_ptr<ZRNButton>& forward() { return body().transportControlView()->fastForwardButton(); }
    const std::shared_ptr<ZRNButton>& playPause() { return body().transportControlView()->playPauseButton(); }
    std::string elapsed() { return nowPlaying().progressView()->timeLabel()->text(); }
    std::string shownTitle() { return nowPlaying().titleLabel()->text(); }
    std::string imageOf(const ZRNButton& button) { return button.imageForState(ControlState::Normal).name(); }

    const std::shared_ptr<FakeServiceProvider> provider = make<FakeServiceProvider>();
    const std::shared_ptr<ViewController> root = make<ViewController>();
    std::shared_ptr<Music> music;
};

TEST_F(MusicNowPlayingTest, EachWayInAsksTheProviderForWhatWasPicked) {
    const auto query = MediaQuery::songsQuery();
    Music::withQueryStartingAtIndex(query, 7, player, provider);
    EXPECT_EQ(provider->given, (Dictionary{{"shuffleType", 0}, {"startIndex", 7}}));
    EXPECT_EQ(provider->asked, query);
    Music::withQueryToShuffle(query, player, provider);
    EXPECT_EQ(provider->given, (Dictionary{{"shuffleType", 1}}));
    const auto playlist = make<MediaPlaylist>(5);
    Music::withBrivoMixPlaylist(playlist, player, provider);
    EXPECT_EQ(provider->given, Dictionary());
    EXPECT_EQ(provider->asked, playlist);
    provider->given.reset();
    Music::withRadioStation(nullptr, player, provider);
    play(addSongs({"One"}));
    player->pause();
    EXPECT_EQ(Music::withPlayer(player, provider, true)->modalTransitionStyle(), 13);
    EXPECT_TRUE(player->isPlaying());
    EXPECT_FALSE(provider->given.has_value());
    const auto longest = Music::withPlayer(nullptr, nullptr, true);  // no car is ready at once
    longest->updateTrackInformation();
    show(longest);
}

TEST_F(MusicNowPlayingTest, ShowsTheSongAndFollowsThePlayer) {
    present(addSongs({"First", "Second", "Third"}));
    const auto position =
        std::dynamic_pointer_cast<Label>(music->navigationItem()->rightBarButtonItem()->customView());
    EXPECT_EQ(shownTitle() + ", " + position->text(), "First, 1 of 3");
    player->changePlaybackIndexBy(1);
    EXPECT_EQ(shownTitle() + ", " + position->text(), "Second, 2 of 3");
    const auto explicitItem = player->currentMediaItem()->persistentID();
    library->setValue(explicitItem, MediaItemProperty::IsExplicit, true);
    play(MediaQuery::songsQuery(), 1);
    EXPECT_TRUE(nowPlaying().isExplicitTrack());
}

TEST_F(MusicNowPlayingTest, TimeRunsOnWhileItPlaysAndDrawsNoMoreThanItsStrip) {
    present(addSongs({"One"}));
    const auto before = elapsed();
    advance(3);
    EXPECT_NE(elapsed(), before);
    settle();
    advance(1);
    const Rect strip = nowPlaying().progressView()->convertToWindow(nowPlaying().progressView()->bounds());
    const auto damage = window->takeDamage();
    EXPECT_FALSE(damage.empty());
    for (const Rect& area : damage) EXPECT_TRUE(strip.contains(area)) << area.x() << " " << area.y();

    tap(*playPause());
    EXPECT_EQ(imageOf(*playPause()), "HelmoPlayButton") << "pausing refreshes once";
    const auto paused = elapsed();
    player->setCurrentTime(Seconds(100));
    EXPECT_NE(elapsed(), paused) << "a jump is told of while paused, too";
    EXPECT_EQ(loop.nextDue(), std::nullopt) << "nothing ticks while paused";
    tap(*playPause());
    EXPECT_EQ(imageOf(*playPause()), "HelmoPauseButton");
    advance(1);
    EXPECT_EQ(elapsed(), "1:41");
}

TEST_F(MusicNowPlayingTest, OffViewItFollowsNothing) {
    present(addSongs({"One", "Two"}));
    root->dismissViewController(true);
    advance(1);
    player->changePlaybackIndexBy(1);
    advance(5);
    EXPECT_EQ(shownTitle(), "One");
    std::weak_ptr<Music> gone = music;
    music = nullptr;
    advance(1);
    EXPECT_TRUE(gone.expired());
}

TEST_F(MusicNowPlayingTest, ATapSkipsAndAHoldSeeks) {
    present(addSongs({"One", "Two"}));
    tap(*forward());
    tap(*left());
    touchDown(*forward());
    advance(2);
    EXPECT_TRUE(player->isSeekingOrScrubbing());
    EXPECT_EQ(imageOf(*playPause()), "HelmoPauseButton") << "it will play on";
    touchUp(*forward());
    EXPECT_FALSE(player->isSeekingOrScrubbing());
    EXPECT_EQ(shownTitle(), "One");
    EXPECT_GT(player->currentTime(), Seconds(4));
    const ZRNNowPlayingActionType none{-1};
    music->nowPlayingViewControllerDidSendActionState(body(), none, ZRNNowPlayingActionStateEnded);
    EXPECT_TRUE(player->isPlaying());
}

TEST_F(MusicNowPlayingTest, PlayModesAreStoredBeforeThePlayerChanges) {
    present(addSongs({"One", "Two"}));
    std::vector<std::int64_t> active;
    defaults->willStore = [&] {
        active.push_back(player->activeShuffleType() * 10 + player->activeRepeatType());
    };
    const auto& modes = body().playModeControlView();
    EXPECT_EQ(modes->shuffleButton()->titleForState(ControlState::Normal), "Shuffle off");
    tap(*modes->shuffleButton());
    EXPECT_EQ(modes->shuffleButton()->titleForState(ControlState::Normal), "Shuffle all");
    player->setActiveShuffleType(2);
    tap(*modes->shuffleButton());
    for (const auto* label : {"Repeat all", "Repeat song", "Repeat off"}) {
        tap(*modes->repeatButton());
        EXPECT_EQ(modes->repeatButton()->titleForState(ControlState::Normal), label);
    }
    const std::vector<std::pair<std::string, std::int64_t>> stored = {
        {"shuffle", 1}, {"shuffle", 0}, {"repeat", 2}, {"repeat", 1}, {"repeat", 0}};
    EXPECT_EQ(defaults->stored, stored);
    EXPECT_EQ(active, (std::vector<std::int64_t>{0, 20, 0, 2, 1}));

    EXPECT_TRUE(modes->brivoButton()->isHidden()) << "nothing to create";
    library->brivoEnabled = true;
    library->brivoPlaylist = make<MediaPlaylist>(library->addPlaylist("Mix", {}));
    body().updatePlayControls();
    EXPECT_FALSE(modes->brivoButton()->isHidden());
}

TEST_F(MusicNowPlayingTest, RepeatAllNamesWhereTheQueueComesFrom) {
    addSongs({"One"});
    library->addPlaylist("List", {1});
    const std::pair<const char*, std::string> cases[] = {
        {nullptr, "Repeat all"},
        {MediaItemProperty::AlbumPersistentID, "Repeat album"},
        {MediaItemProperty::ArtistPersistentID, "Repeat artist"},
        {MediaItemProperty::AlbumArtistPersistentID, "Repeat artist"},
        {MediaPlaylistProperty::PersistentID, "Repeat playlist"},
    };
    player->setActiveRepeatType(2);
    const auto song = MediaLibrary::defaultLibrary()->itemWithPersistentID(1, false);
    for (const auto& [property, label] : cases) {
        const auto query = MediaQuery::songsQuery();
        if (property) {
            const bool isPlaylist = property == std::string(MediaPlaylistProperty::PersistentID);
            const auto id =
                isPlaylist
                    ? Value(MediaQuery::playlistsQuery()->collections()->entityAtIndex(0)->persistentID())
                    : song->valueForProperty(property);
            query->addFilterPredicate(MediaPredicate::property(property, id));
        }
        play(query);
        ASSERT_TRUE(player->currentItem()) << label;
        music = Music::withPlayer(player, provider, false);
        EXPECT_EQ(music->repeatStringForNowPlayingViewController(body()), label);
    }
}

TEST_F(MusicNowPlayingTest, ArtworkIsReplacedClearedAndShownAgain) {
    for (const auto* token : {"red", "blue"}) {
        library->artwork.insert(token);
        library->addSong(token, "Artist", "Album", 0,
                         {{MediaItemProperty::ArtworkToken, token}, {MediaItemProperty::Location, token}});
    }
    library->addSong("plain", "Artist", "Album", 0, {{MediaItemProperty::Location, "plain"}});
    const auto query = MediaQuery::songsQuery();  // blue, plain, red
    present(query);
    const auto art = [&] { return nowPlaying().artworkView()->image(); };
    EXPECT_EQ(art().size().width, 800);
    player->changePlaybackIndexBy(1);
    EXPECT_FALSE(art()) << "no other song's picture stays";
    player->changePlaybackIndexBy(-1);
    advance(0);
    const Image blue = art();
    ASSERT_TRUE(blue) << "the same picture as before comes back";
    player->changePlaybackIndexBy(1);
    player->changePlaybackIndexBy(-1);
    EXPECT_TRUE(art() == blue) << "at hand, so within the same pass";

    player->changePlaybackIndexBy(2);  // red is still on its way when blue comes back
    player->changePlaybackIndexBy(-2);
    advance(1);
    EXPECT_TRUE(art() == blue);
    player->changePlaybackIndexBy(2);
    EXPECT_FALSE(art() == blue);
    advance(0);
    EXPECT_TRUE(art() && art() != blue);
}

TEST_F(MusicNowPlayingTest, RadioAndAdvertisementsHaveTheirOwnControls) {
    const auto showItem = [this](bool radio, const std::string& album) {
        player->reloadWithFeeder(make<OneItemFeeder>(make<OtherItem>(radio, album)), true);
    };
    showItem(true, "Station");
    present();
    EXPECT_EQ(music->viewMode(), 2);
    EXPECT_EQ(imageOf(*left()), "HelmoRadioInfoButton");
    EXPECT_FALSE(left()->isHidden());
    EXPECT_TRUE(forward()->isHidden()) << "the feeder says so";
    EXPECT_TRUE(body().playModeControlView()->shuffleButton()->isHidden());
    EXPECT_EQ(nowPlaying().albumLabel()->text(), "Station");

    showItem(false, "");
    EXPECT_EQ(music->viewMode(), 3);
    EXPECT_TRUE(left()->isHidden() && !playPause()->isHidden());
    EXPECT_EQ(nowPlaying().albumLabel()->text(), "Kivo");
    play(addSongs({"One"}));
    EXPECT_EQ(music->viewMode(), 1);
    EXPECT_EQ(imageOf(*left()), "HelmoRewindButton");
}

TEST_F(MusicNowPlayingTest, TheKnobStartsOnPlayAndReachesEveryButton) {
    setUIMode(2);
    present(addSongs({"One", "Two"}));
    EXPECT_EQ(window->focusSystem().focusedItem(), playPause());
    pressKnob();
    EXPECT_FALSE(player->isPlaying());
    window->turnKnob(1);
    pressKnob();
    EXPECT_EQ(shownTitle(), "Two");
    window->turnKnob(2);
    EXPECT_EQ(window->focusSystem().focusedItem(), body().playModeControlView()->shuffleButton());
    window->turnKnob(-10);
    pressKnob();
    advance(1);
    EXPECT_EQ(root->presentedViewController(), nullptr) << "the back button comes first of all";
}

}  // namespace
