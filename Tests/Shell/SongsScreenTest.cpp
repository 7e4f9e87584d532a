#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Tests/Shell/LibraryScreens.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "View Controllers/ZRNSongsViewController.h"

namespace zornic {
namespace {

class SongsScreenTest : public testing::Test, protected LibraryScreens {
protected:
    TableView& openSongs() {
        openTab(ZRNSongsViewControllerIdentifier);
        songs = std::dynamic_pointer_cast<ZRNSongsViewController>(strong(&list()));
        return *songs->tableView();
    }
    static std::string textAt(TableView& table, const IndexPath& path) {
        const auto cell = table.cellForRowAtIndexPath(path);
        return cell ? cell->textLabel()->text() : "(no row)";
    }

    std::shared_ptr<ZRNSongsViewController> songs;
};

TEST_F(SongsScreenTest, ATappedSongPlaysTheListFromThereUnlessItHasJustGone) {
    addSongs({"Ash", "Bay", "Elm", "Gone"});
    auto& table = openSongs();
    library->removeItem(songs->queryDataSource()->entityAtIndex(3)->persistentID());
    tap(*table.cellForRowAtIndexPath({4, 0}));
    EXPECT_EQ(playing(), "");
    EXPECT_EQ(browser->presentedViewController(), nullptr);
    tap(*table.cellForRowAtIndexPath({2, 0}));
    EXPECT_EQ(playing(), "Bay");
    EXPECT_EQ(player->playbackCount(), 3U);
    EXPECT_EQ(player->currentMediaQuery(), songs->queryDataSource()->query());
    EXPECT_EQ(table.indexPathsForSelectedRows(), std::vector{(IndexPath{2, 0})})
        << "marked while it is covered";

    advance(5);
    browser->dismissViewController(true);
    advance(1);
    EXPECT_TRUE(table.indexPathsForSelectedRows().empty());
    EXPECT_TRUE(table.cellForRowAtIndexPath({2, 0})->showsPlayingMark());
    EXPECT_FALSE(table.cellForRowAtIndexPath({1, 0})->showsPlayingMark());
    const double elapsed = player->currentTime().count();
    tap(*table.cellForRowAtIndexPath({2, 0}));
    EXPECT_GE(player->currentTime().count(), elapsed) << "goes on, unbroken";
    browser->dismissViewController(false);

    player->changePlaybackIndexBy(1);
    advance(0);
    EXPECT_TRUE(table.cellForRowAtIndexPath({3, 0})->showsPlayingMark());
    EXPECT_FALSE(table.cellForRowAtIndexPath({2, 0})->showsPlayingMark());
}

TEST_F(SongsScreenTest, MoreThanOneSongCanBeShuffled) {
    addSongs({"Ash"});
    auto& table = openSongs();
    EXPECT_EQ(textAt(table, {0, 0}), "Ash");
    EXPECT_EQ(table.numberOfSections(), 1U);
    addSongs({"Bay", "Elm"});
    library->postDidChange();
    advance(0);
    ASSERT_EQ(textAt(table, {0, 0}), "Shuffle");
    EXPECT_TRUE(table.cellForRowAtIndexPath({0, 0})->accessoryView());
    choose(0, 0);
    EXPECT_EQ(player->activeShuffleType(), 1);
    EXPECT_EQ(player->playbackCount(), 3U);
}

TEST_F(SongsScreenTest, AKnobListOpensAtItsVeryTop) {
    std::vector<std::string> titles;
    for (int i = 10; i < 40; ++i) titles.push_back("A" + std::to_string(i));
    addSongs(titles);
    EXPECT_NE(textAt(openSongs(), {1, 0}), "(no row)");
    EXPECT_EQ(textAt(*songs->tableView(), {0, 0}), "(no row)") << "touch opens below the shuffle row";
    setUIMode(2);
    EXPECT_EQ(textAt(openSongs(), {0, 0}), "Shuffle");
}

TEST_F(SongsScreenTest, ASongWithoutTextsSaysSo) {
    library->addSong("", "", "");
    library->addSong("Bay", "Anna", "Album");
    auto& table = openSongs();
    const auto full = table.cellForRowAtIndexPath({1, 0}), bare = table.cellForRowAtIndexPath({2, 0});
    ASSERT_TRUE(bare && full);
    EXPECT_EQ(bare->textLabel()->text(), "Unknown title");
    EXPECT_EQ(bare->detailTextLabel()->text(), "Unknown artist Unknown album");
    EXPECT_EQ(full->detailTextLabel()->text(), "Anna Album");
    const auto& runs = full->detailTextLabel()->styledText().runs();
    EXPECT_EQ(runs.front().attributes.color, labelDefaultColor());
    EXPECT_EQ(runs.back().attributes.color, _externalSystemGrayColor());
}

TEST_F(SongsScreenTest, AReusedRowDoesNotKeepTheLastSongsPicture) {
    library->artwork.insert("cover");
    std::vector<std::string> titles;
    for (int i = 10; i < 60; ++i) titles.push_back("A" + std::to_string(i));
    addSongs({"A00", "A01"}, {{MediaItemProperty::ArtworkToken, "cover"}});
    addSongs(titles);
    auto& table = openSongs();
    const auto first = std::dynamic_pointer_cast<ZRNTableViewCell>(table.cellForRowAtIndexPath({1, 0}));
    ASSERT_TRUE(first);
    const Image cover = first->artworkImage(), placeholder = ZRNAlbumPlaceholderImageWithStyle(1);
    EXPECT_TRUE(cover);
    EXPECT_NE(cover, placeholder);
    EXPECT_EQ(cover.size(), (Size{36, 36}));
    table.scrollToRowAtIndexPath({1, 40}, true, false);
    advance(0);
    for (const auto& cell : table.visibleCells())
        EXPECT_EQ(std::dynamic_pointer_cast<ZRNTableViewCell>(cell)->artworkImage(), placeholder);

    // Another screen has that picture at once, whatever the cell showed before.
    const auto albums =
        ScreenRegistry::shared().viewControllerForIdentifier(ZRNAlbumsViewControllerIdentifier);
    first->setArtworkImage(ZRNAlbumPlaceholderImageWithStyle(0));
    albums->cellConfiguration().configureCellWithViewControllerEntityAtIndexAnimated(
        first, *albums, albums->queryDataSource()->entityAtIndex(0), 0, false);
    EXPECT_EQ(first->artworkImage(), cover);
}

TEST_F(SongsScreenTest, TheIndexBarMayBeLeftOut) {
    addSongs({"Ash", "Bay"});
    auto& table = openSongs();
    EXPECT_EQ(songs->sectionIndexTitlesForTableView(table), (std::vector<std::string>{"A", "B"}));
    songs->setShouldHideIndexTitles(true);
    EXPECT_TRUE(songs->sectionIndexTitlesForTableView(table).empty());
    EXPECT_EQ(songs->tableViewTitleForHeaderInSection(table, 1), "A");
    EXPECT_EQ(table.rectForHeaderInSection(1).height(), 0)
        << "sections are headed only where a screen wants it";
}

}  // namespace
}  // namespace zornic
