#include "Tests/Shell/LibraryScreens.h"

namespace zornic {
namespace {

class GenresScreenTest : public testing::Test, protected LibraryScreens {
protected:
    GenresScreenTest() {
        using namespace MediaItemProperty;
        library->addSong("A", "Anna", "Ash", 1, {{Genre, "Folk"}});
        library->addSong("B", "Bert", "Bay", 1, {{Genre, "Folk"}, {AlbumArtist, "Anna"}});
        library->addSong("C", "Cora", "Cut", 1, {{Genre, "Polka"}});
        library->addSong("D", "Cora", "Cut", 2, {{Genre, "Tango"}});
    }
};

TEST_F(GenresScreenTest, AGenreOfSeveralLeadsToItsArtists) {
    openTab(ZRNGenresViewControllerIdentifier);
    list().navigationItem()->setPrompt("Prompt");
    choose(0, 0);
    EXPECT_EQ(list().identifier(), ZRNArtistsViewControllerIdentifier);
    EXPECT_EQ(list().navigationItem()->prompt(), "Prompt");
    EXPECT_TRUE(list().navigationItem()->rightBarButtonItem());
    EXPECT_EQ(rows(), (Rows{"Shuffle", "Anna", "Bert"}));
    choose(0, 0);
    EXPECT_EQ(player->activeShuffleType(), 1);
    EXPECT_EQ(player->playbackCount(), 2U);
    browser->dismissViewController(false);
    advance(1);

    groupByAlbumArtist(true);
    EXPECT_EQ(rows(), (Rows{"Anna"})) << "one row needs no shuffling";
    browser->popViewControllerAnimated(false);
    advance(0);
    choose(0, 0);
    EXPECT_EQ(rows(), (Rows{"Anna"}));
}

TEST_F(GenresScreenTest, AGenreOfOneLeadsToTheAlbumsInIt) {
    openTab(ZRNGenresViewControllerIdentifier);
    list().navigationItem()->setPrompt("Prompt");
    choose(1, 0);
    EXPECT_EQ(list().navigationItem()->prompt(), "Prompt");
    EXPECT_EQ(list().queryDataSource()->count(), 1U) << "the tango is no polka";
}

TEST_F(GenresScreenTest, OfSeveralAlbumArtistsTheLastSongsIsTheOne) {
    library->addSong("E", "Cora", "Dry", 1,
                     {{MediaItemProperty::Genre, "Polka"}, {MediaItemProperty::AlbumArtist, "Dora"}});
    openTab(ZRNGenresViewControllerIdentifier);
    groupByAlbumArtist(true);
    list().setShouldDeselectImmediately(true);
    const auto genres = list().tableView();
    choose(1, 0);
    EXPECT_EQ(list().title(), "Dora");
    EXPECT_EQ(list().queryDataSource()->count(), 1U);
    EXPECT_EQ(genres->indexPathsForSelectedRows(), std::vector{(IndexPath{1, 0})})
        << "nothing follows the jump over the artists";
    browser->popViewControllerAnimated(false);
    advance(1);
    choose(0, 0);
    EXPECT_TRUE(genres->indexPathsForSelectedRows().empty());
}

}  // namespace
}  // namespace zornic
