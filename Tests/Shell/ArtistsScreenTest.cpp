#include <gtest/gtest.h>

#include "Data Sources/ZRNArtistsDataSource.h"
#include "Tests/Shell/LibraryScreens.h"

namespace zornic {
namespace {

class ArtistsScreenTest : public testing::Test, protected LibraryScreens {
protected:
    void addGuests() {
        using namespace MediaItemProperty;
        library->addSong("A", "Anna", "Ash", 1, {{Composer, "Zoe"}});
        library->addSong("B", "Bert", "Ash", 2, {{AlbumArtist, "Anna"}});
        library->addSong("C", "Cora", "Cut", 1, {{Composer, "Zoe"}});
    }
};

TEST_F(ArtistsScreenTest, AnOpenListFollowsTheSetting) {
    addGuests();
    openTab(ZRNArtistsViewControllerIdentifier);
    EXPECT_EQ(rows(), (Rows{"Anna", "Bert", "Cora"})) << "nothing to shuffle in the whole list";
    groupByAlbumArtist(true);
    EXPECT_EQ(rows(), (Rows{"Anna", "Cora"}));
    choose(0, 0);
    EXPECT_EQ(list().title(), "Anna");
    EXPECT_EQ(list().queryDataSource()->count(), 2U) << "with the guest on the album";
    browser->popViewControllerAnimated(false);
    groupByAlbumArtist(false);
    EXPECT_EQ(rows(), (Rows{"Anna", "Bert", "Cora"}));
    choose(0, 0);
    EXPECT_EQ(list().queryDataSource()->count(), 1U);

    openTab(ZRNComposersViewControllerIdentifier);
    groupByAlbumArtist(true);
    EXPECT_EQ(rows(), (Rows{"Zoe"})) << "composers are nobody's guests";
}

TEST_F(ArtistsScreenTest, WhoPlaysIsMarkedByArtist) {
    addGuests();
    openTab(ZRNArtistsViewControllerIdentifier);
    play(MediaQuery::songsQuery(), 1);
    ASSERT_EQ(playing(), "B");
    const auto marks = [&] {
        std::string found;
        for (const auto& path : table().indexPathsForVisibleRows())
            found += table().cellForRowAtIndexPath(path)->showsPlayingMark() ? 'x' : '-';
        return found;
    };
    EXPECT_EQ(marks(), "-x-");
    groupByAlbumArtist(true);
    EXPECT_EQ(marks(), "--") << "Bert is the album artist of nothing";
    player->changePlaybackIndexBy(-1);
    advance(0);
    EXPECT_EQ(marks(), "x-");
    player->stop();
    advance(0);
    EXPECT_EQ(marks(), "--");
}

TEST_F(ArtistsScreenTest, AComposerLeadsToHisWorksAlone) {
    addGuests();
    openTab(ZRNComposersViewControllerIdentifier);
    choose(0, 0);
    EXPECT_EQ(list().title(), "Zoe");
    EXPECT_EQ(list().queryDataSource()->numberOfSections(), 2U);
    EXPECT_EQ(list().queryDataSource()->count(), 2U);
}

}  // namespace
}  // namespace zornic
