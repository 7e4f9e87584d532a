#include <set>

#include "Platform/Media/AVQueueFeeder.h"
#include "Platform/Media/ShufflePermutation.h"
#include "Tests/Media/MediaFixture.h"

namespace zornic {
namespace {

class QueueFeederTest : public MediaFixture {
protected:
    void addSongs(int count) {
        for (int song = 0; song < count; ++song)
            ids.push_back(library->addSong(std::string(1, static_cast<char>('A' + song)), "Artist", "Album"));
    }
    std::string order(MediaQueryQueueFeeder& feeder) {
        std::string titles;
        for (std::uint64_t at = 0; at < feeder.count(); ++at)
            titles += feeder.itemAtPosition(at)->mainTitle();
        return titles;
    }

    std::vector<PersistentID> ids;
};

TEST(ShufflePermutation, EveryLengthIsPermutedInBothDirections) {
    for (std::uint64_t count = 1; count < 70; ++count) {
        const ShufflePermutation permutation(count, count * 7);
        std::set<std::uint64_t> seen;
        for (std::uint64_t position = 0; position < count; ++position) {
            const auto index = permutation.indexAt(position);
            EXPECT_LT(index, count);
            EXPECT_EQ(permutation.positionOf(index), position);
            seen.insert(index);
        }
        EXPECT_EQ(seen.size(), count);
    }
    const ShufflePermutation million(1000000, 5);
    for (const std::uint64_t position : {0U, 1U, 499999U, 999999U})
        EXPECT_EQ(million.positionOf(million.indexAt(position)), position);
}

TEST(ShufflePermutation, SeedsReachEveryOrderOfAShortListAboutAsOften) {
    std::map<std::vector<std::uint64_t>, int> orders;
    constexpr int seeds = 2400;
    for (std::uint64_t seed = 0; seed < seeds; ++seed) {
        const ShufflePermutation permutation(3, seed);
        ++orders[{permutation.indexAt(0), permutation.indexAt(1), permutation.indexAt(2)}];
    }
    EXPECT_EQ(orders.size(), 6U);
    for (const auto& [order, times] : orders) EXPECT_NEAR(times, seeds / 6, seeds / 12);
}

TEST_F(QueueFeederTest, WhatWasPickedPlaysFirstAndTheRestShuffled) {
    addSongs(20);
    const auto query = MediaQuery::songsQuery();
    for (std::uint64_t start = 0; start < 20; ++start) {
        const auto feeder = make<MediaQueryQueueFeeder>(query, start, 1, 42 + start);
        EXPECT_EQ(feeder->startPosition(), 0U);
        auto titles = order(*feeder);
        EXPECT_EQ(titles.front(), static_cast<char>('A' + start));
        for (std::uint64_t position = 0; position < 20; ++position) {
            const auto item = std::dynamic_pointer_cast<AVLibraryItem>(feeder->itemAtPosition(position));
            EXPECT_EQ(feeder->positionOfMediaItem(*item->mediaItem()), position);
        }
        EXPECT_FALSE(std::ranges::is_sorted(titles));
        std::ranges::sort(titles);
        EXPECT_EQ(titles, "ABCDEFGHIJKLMNOPQRST");
    }
    EXPECT_NE(order(*make<MediaQueryQueueFeeder>(query, NotFound, 1, 1)),
              order(*make<MediaQueryQueueFeeder>(query, std::nullopt, 1, 2)));
}

TEST_F(QueueFeederTest, SwitchingShuffleKeepsTheCurrentItem) {
    addSongs(20);
    const auto feeder = make<MediaQueryQueueFeeder>(MediaQuery::songsQuery(), 7, 0, 3);
    EXPECT_EQ(feeder->startPosition(), 7U);
    EXPECT_EQ(feeder->setShuffleType(1, 9), 0U);
    const auto shuffled = order(*feeder);
    EXPECT_EQ(shuffled.front(), 'J');
    EXPECT_EQ(feeder->setShuffleType(0, 5), static_cast<std::uint64_t>(shuffled[5] - 'A'));
    EXPECT_EQ(order(*feeder), "ABCDEFGHIJKLMNOPQRST");
    feeder->setShuffleType(1, 9);
    EXPECT_NE(order(*feeder), shuffled) << "shuffled anew";
    EXPECT_EQ(feeder->setShuffleType(0, NotFound), 0U);
}

TEST_F(QueueFeederTest, ItemsAreMadeOnlyWhenAskedFor) {
    addSongs(20);
    const auto feeder = make<MediaQueryQueueFeeder>(MediaQuery::songsQuery(), 3, 1, 3);
    EXPECT_EQ(library->entitiesMade, 0);
    const auto item = feeder->itemAtPosition(2);
    EXPECT_EQ(library->entitiesMade, 1);
    EXPECT_EQ(item->feeder(), feeder);
    EXPECT_EQ(item->localizedPositionInPlaylistString(), "3 of 20");
    EXPECT_EQ(feeder->itemAtPosition(20), nullptr);
    EXPECT_EQ(make<MediaQueryQueueFeeder>(nullptr, 0, 1, 3)->itemAtPosition(0), nullptr);
}

}  // namespace
}  // namespace zornic
