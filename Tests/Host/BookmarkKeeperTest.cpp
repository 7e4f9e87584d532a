#include "Host/BookmarkKeeper.h"
#include "Platform/Media/QueryPlaybackContext.h"
#include "Tests/Host/LibraryFixture.h"

namespace helmo {
namespace {

using namespace zornic;
using testing::DoubleNear;
using testing::Optional;

/** A book of two parts of a minute each and a song, played in silence. */
class BookmarkKeeperTest : public LibraryFixture {
protected:
    BookmarkKeeperTest() {
        auto one = tags("One", "Ann", "Book", 1), two = tags("Two", "Ann", "Book", 2), song = tags("Song");
        for (TrackTags* track : {&one, &two, &song}) track->duration = 60;
        one.mediaType = MediaType::Audiobook;
        two.mediaType = MediaType::Podcast;
        add({one, two, song});
        listen();
    }
    ~BookmarkKeeperTest() override {
        _keeper = nullptr;
        _player = nullptr;
    }
    void listen() {
        _keeper = nullptr;
        _player = make<AVController>(make<ClockedPlaybackEngine>());
        _keeper = make<BookmarkKeeper>(_player, _library);
    }
    void choose(const std::string& title) {
        const auto all = query();
        const auto names = titles(*all);
        const auto index = std::ranges::find(names, title) - names.begin();
        const auto context = make<QueryPlaybackContext>(all);
        context->setStartIndex(static_cast<std::uint64_t>(index));
        _player->reloadWithPlaybackContext(context);
    }
    void advance(int seconds) {
        for (const auto end = _clock.now() + std::chrono::seconds(seconds); _clock.now() < end;) {
            _clock.advance(std::chrono::milliseconds(500));
            _runLoop.runDue();
        }
    }
    std::shared_ptr<MediaItem> named(const std::string& title) const {
        return item(*query({}, {MediaPredicate::property(MediaItemProperty::Title, title)}), 0);
    }
    /** As it lies in the file by now. */
    std::optional<double> stored(const std::string& title) {
        BackgroundWork::waitUntilIdle(std::chrono::seconds(10));
        Database database(databaseFile(), Database::Access::ReadOnly);
        auto row = database.prepare({"SELECT bookmark FROM track WHERE title = ?", {title}});
        return row.step() && !row.isNull(0) ? std::optional(row.number(0)) : std::nullopt;
    }

    ManualClock _clock;
    RunLoop _runLoop{_clock};
    std::shared_ptr<AVController> _player;
    std::shared_ptr<BookmarkKeeper> _keeper;
};

TEST_F(BookmarkKeeperTest, PlaceIsKeptWhilePlayingAndTakenUpAgain) {
    choose("One");
    advance(35);
    EXPECT_THAT(stored("One"), Optional(DoubleNear(30, 1))) << "what a sudden end costs";
    _player->pause();
    EXPECT_THAT(stored("One"), Optional(DoubleNear(35, 0.6)));
    _player->setCurrentTime(Seconds(20));
    EXPECT_THAT(stored("One"), Optional(DoubleNear(20, 0.1))) << "moved while it is paused";
    _player->play();
    advance(4);
    const auto part = named("One");
    choose("Song");
    EXPECT_THAT(part->bookmarkTime(), Optional(DoubleNear(24, 1)))
        << "known at once, even of an item at hand";
    advance(15);
    EXPECT_EQ(stored("Song"), std::nullopt) << "songs begin at their beginning";
    choose("One");
    EXPECT_NEAR(_player->currentTime().count(), 24, 1);
    advance(4);
    listen();  // helmo ends
    EXPECT_THAT(stored("One"), Optional(DoubleNear(28, 1)));

    _library->setBookmark(part->persistentID(), 60);
    choose("One");
    EXPECT_EQ(_player->currentTime(), Seconds(0)) << "a bookmark at the very end";
}

TEST_F(BookmarkKeeperTest, WhatWasHeardOutBeginsAnew) {
    choose("One");
    advance(20);
    ASSERT_TRUE(stored("One"));
    const auto slow = NotificationCenter::defaultCenter().observe(
        AVControllerItemEndedNotification, _player.get(),
        [this](const Notification&) { _clock.advance(std::chrono::milliseconds(20)); });
    advance(45);
    ASSERT_EQ(_player->currentMediaItem()->title(), "Song");
    EXPECT_EQ(stored("One"), std::nullopt) << "however long it takes until the next one is there";
    choose("Two");
    _clock.advance(std::chrono::milliseconds(300));
    choose("Song");
    EXPECT_EQ(stored("Two"), std::nullopt) << "gone before it was seen to play, as what is damaged is";
    choose("Two");
    _player->setCurrentTime(Seconds(59.5));
    EXPECT_NEAR(_player->currentTime().count(), 59.5, 0.1);
    _player->pause();
    EXPECT_EQ(stored("Two"), std::nullopt) << "all but a moment";
    _player->setActiveRepeatType(1);
    _player->setCurrentTime(Seconds(50));
    _player->play();
    advance(25);
    EXPECT_THAT(stored("Two"), Optional(DoubleNear(11, 2))) << "heard out, and again from its beginning";
}

}  // namespace
}  // namespace helmo
