#include "Cell Configurations/ZRNArtistCellConfiguration.h"
#include "Data Sources/ZRNArtistsDataSource.h"
#include "Tests/Shell/LibraryScreens.h"
#include "View Controllers/ZRNArtistsViewController.h"

namespace zornic {
namespace {

/** One artist, of whom only the songs are known. */
class BareArtist final : public ZRNArtistsDataSource {
public:
    using ZRNArtistsDataSource::ZRNArtistsDataSource;
    std::shared_ptr<const MediaEntityList> entities() override { return artist; }
    std::shared_ptr<const MediaEntityList> artist;
};

class ArtistsScreenTest : public testing::Test, protected LibraryScreens {
protected:
    void addGuests() {
        using namespace MediaItemProperty;
        library->addSong("A", "Anna", "Ash", 1, {{Composer, "Zoe"}});
        library->addSong("B", "Bert", "Ash", 2, {{AlbumArtist, "Anna"}});
        library->addSong("C", "Cora", "Cut", 1, {{Composer, "Zoe"}, {AlbumArtist, "Cut & Co"}});
    }
};

TEST_F(ArtistsScreenTest, AnOpenListFollowsTheSetting) {
    addGuests();
    openTab(ZRNArtistsViewControllerIdentifier);
    EXPECT_EQ(rows(), (Rows{"Anna", "Bert", "Cora"})) << "nothing to shuffle in the whole list";
    groupByAlbumArtist(true);
    EXPECT_EQ(rows(), (Rows{"Anna", "Cut & Co"}));
    list().navigationItem()->setPrompt("Prompt");
    choose(1, 0);
    EXPECT_EQ(list().title(), "Cut & Co");
    EXPECT_EQ(list().navigationItem()->prompt(), "") << "that of the list stays there";
    browser->popViewControllerAnimated(false);
    advance(1);
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
}

TEST_F(ArtistsScreenTest, AnArtistWithoutAnIDIsFoundByASong) {
    addGuests();
    openTab(ZRNArtistsViewControllerIdentifier);
    const auto source = make<BareArtist>(MediaQuery::artistsQuery(), EntityType::Collections);
    const auto push = [&](const char* title) {
        MediaQueryDescription songs;
        songs.predicates = {MediaPredicate::property(MediaItemProperty::Title, title)};
        source->artist = std::make_shared<MediaEntityArray>(std::vector<std::shared_ptr<MediaEntity>>{
            make<MediaItemCollection>(library, 1, Dictionary(), songs)});
        browser->pushViewController(
            make<ZRNArtistsViewController>(source, ZRNArtistCellConfiguration::instance()), false);
        advance(0);
        choose(0, 0);
        return list().queryDataSource();
    };
    EXPECT_EQ(push("C")->count(), 1U);
    EXPECT_EQ(list().title(), "Cora");
    EXPECT_EQ(push("gone")->count(), 0U) << "nobody's albums are none, not everybody's";
    EXPECT_EQ(list().title(), "");
}

}  // namespace
}  // namespace zornic
