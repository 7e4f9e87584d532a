#include "Tests/Shell/LibraryScreens.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "View Controllers/ZRNAlbumsDetailViewController.h"
#include "Views/ZRNAlbumsDetailTableHeaderView.h"
#include "Views/_ZRNAlbumTracksCell.h"

namespace zornic {
namespace {

class AlbumsDetailScreenTest : public testing::Test, protected LibraryScreens {
protected:
    void addAlbum(const std::string& album, int year, const std::vector<double>& durations,
                  const Dictionary& more = {}) {
        std::int64_t track = 0;
        for (const double duration : durations) {
            Dictionary values = more;
            values.insert({{MediaItemProperty::Year, year}, {MediaItemProperty::PlaybackDuration, duration}});
            ++track;
            library->addSong(album + " " + std::to_string(track), "Anna", album, track, std::move(values));
        }
    }
    void openFirst(const char* tab) {
        openTab(tab);
        choose(0, 0);
    }
    _ZRNAlbumTracksCell& track(std::uint64_t section, std::uint64_t row) const {
        return cellOf<_ZRNAlbumTracksCell>(section, row);
    }
    /** Headers on view, from the top. */
    std::vector<std::shared_ptr<ZRNAlbumsDetailTableHeaderView>> headers() const {
        std::vector<std::shared_ptr<ZRNAlbumsDetailTableHeaderView>> found;
        for (const auto& view : table().subviews())
            if (const auto header = std::dynamic_pointer_cast<ZRNAlbumsDetailTableHeaderView>(view))
                found.push_back(header);
        std::ranges::sort(found, {}, [](const auto& header) { return header->frame().y(); });
        return found;
    }
};

TEST_F(AlbumsDetailScreenTest, AnArtistsAlbumsStandOneAfterTheOther) {
    library->artwork.insert("cover");
    addAlbum("Cut", 1990, {60, 60});
    addAlbum("Ash", 2000, {60, 60, 60}, {{MediaItemProperty::ArtworkToken, "cover"}});
    addAlbum("Bay", 2010, {200});
    openFirst(ZRNArtistsViewControllerIdentifier);
    auto& source = *list().queryDataSource();
    EXPECT_EQ(source.rangeOfSectionAtIndex(2), (Range{5, 1}));
    EXPECT_EQ(source.rangeOfSectionAtIndex(0), (Range{0, 2}));
    EXPECT_EQ(source.rangeOfSectionAtIndex(1), (Range{2, 3}));
    EXPECT_EQ(source.rangeOfSectionAtIndex(3), (Range{6, 0}));
    ASSERT_EQ(table().numberOfSections(), 4U) << "with the shuffle row's";
    EXPECT_EQ(table().rectForHeaderInSection(0).height(), 0);
    ASSERT_EQ(headers().size(), 3U);
    EXPECT_EQ(headers()[1]->title(), "Ash");
    EXPECT_EQ(headers()[1]->subtitle(), "3 songs, 3 min");
    EXPECT_EQ(headers()[1]->frame().height(), 44);

    choose(2, 0);
    EXPECT_EQ(playing(), "Ash 1");
    EXPECT_EQ(player->playbackCount(), 6U) << "all of them, from there";
    browser->dismissViewController(false);
    advance(1);
    EXPECT_TRUE(track(2, 0).showsPlayingMark());
    EXPECT_TRUE(track(2, 0).trackNumberLabel()->isHidden()) << "the mark stands in its place";
    EXPECT_FALSE(track(2, 1).trackNumberLabel()->isHidden());

    const auto second = headers()[1];
    tap(*second->shuffleButton());
    EXPECT_EQ(player->playbackCount(), 3U) << "this album alone";
    EXPECT_EQ(player->activeShuffleType(), 1);
    browser->dismissViewController(false);
    table().scrollToRowAtIndexPath({0, 0}, true, false);
    advance(0);
    choose(0, 0);
    EXPECT_EQ(player->playbackCount(), 6U);
    browser->dismissViewController(false);

    // A header that outlives its screen keeps its picture and does nothing.
    const std::weak_ptr<ViewController> gone = browser->topViewController();
    browser->popViewControllerAnimated(false);
    advance(1);
    EXPECT_TRUE(gone.expired());
    EXPECT_TRUE(second->artworkImage() && second->artworkImage().name().empty());
    player->stop();
    second->_shuffleButtonAction(second->shuffleButton());
    EXPECT_EQ(playing(), "");
}

TEST_F(AlbumsDetailScreenTest, OneAlbumHasItsShuffleButtonInTheHeader) {
    library->artwork.insert("cover");
    addAlbum("Ash", 1990, {59, 3599.4}, {{MediaItemProperty::ArtworkToken, "cover"}});
    library->addSong("Hidden", "Bert", "Ash", 0,
                     {{MediaItemProperty::AlbumArtist, "Anna"}, {MediaItemProperty::ArtworkToken, "cover"}});
    openTab(ZRNAlbumsViewControllerIdentifier);
    list().navigationItem()->setPrompt("Prompt");
    choose(0, 0);
    EXPECT_EQ(list().title(), "Ash");
    EXPECT_EQ(list().navigationItem()->prompt(), "Prompt");
    EXPECT_EQ(table().numberOfSections(), 1U) << "no shuffle row";
    EXPECT_EQ(list().tableViewTitleForHeaderInSection(table(), 0), std::nullopt) << "a letter heads no album";
    ASSERT_EQ(headers().size(), 1U);
    EXPECT_TRUE(headers()[0]->artworkImage());
    EXPECT_NE(headers()[0]->artworkImage(), ZRNAlbumPlaceholderImageWithStyle(1));
    EXPECT_LE(headers()[0]->subtitleLabel()->frame().maxX() + 8, headers()[0]->shuffleButton()->frame().x());

    EXPECT_EQ(track(0, 0).trackNumberText(), "");
    EXPECT_EQ(track(0, 1).trackNumberText(), "1");
    EXPECT_EQ(track(0, 2).durationText(), "1:00:00");
    const auto shorter = track(0, 1).durationLabel(), longest = track(0, 2).durationLabel();
    EXPECT_EQ(shorter->frame(), longest->frame()) << "one column";
    EXPECT_FALSE(longest->isTruncated());
    EXPECT_EQ(cell(0, 2)->accessibilityText(), "Ash 2, 1:00:00");
    EXPECT_EQ(longest->frame().maxX(), 800 - 12);
    EXPECT_EQ(track(0, 1).titleLabel()->frame().x(), 39);
    EXPECT_EQ(track(0, 1).titleLabel()->frame().maxX(), longest->frame().x() - 9);
    tap(*headers()[0]->shuffleButton());
    EXPECT_EQ(player->playbackCount(), 3U);
    EXPECT_EQ(player->activeShuffleType(), 1);
}

TEST_F(AlbumsDetailScreenTest, AHeaderRoundsToTheNearestMinute) {
    const auto header = make<ZRNAlbumsDetailTableHeaderView>("header");
    const std::vector<std::pair<double, const char*>> cases = {
        {29, "3 songs"}, {89, "3 songs, 1 min"}, {90, "3 songs, 2 min"}};
    for (const auto& [duration, text] : cases) {
        header->setDurationCount(duration, 3);
        EXPECT_EQ(header->subtitle(), text);
    }
    const auto& runs = header->subtitleLabel()->styledText().runs();
    ASSERT_EQ(runs.size(), 4U);
    EXPECT_EQ(runs[0].text + runs[2].text, "32");
    EXPECT_EQ(runs[0].attributes.font, Font::boldSystemFont(12));
    EXPECT_EQ(runs[1].attributes.font, Font::systemFont(12));
}

TEST_F(AlbumsDetailScreenTest, TheLibraryMayChangeUnderIt) {
    addAlbum("Ash", 1990, {60, 60});
    openFirst(ZRNAlbumsViewControllerIdentifier);
    library->addSong("New", "Anna", "Ash", 3);
    library->postDidChange();
    advance(0);
    EXPECT_EQ(list().queryDataSource()->rangeOfSectionAtIndex(0), (Range{0, 3}));
    EXPECT_EQ(track(0, 2).title(), "New");
    EXPECT_EQ(headers()[0]->subtitle(), "3 songs, 5 min");
    while (const auto item =
               std::dynamic_pointer_cast<MediaItem>(MediaQuery::songsQuery()->items()->entityAtIndex(0)))
        library->removeItem(item->persistentID());
    library->postDidChange();
    advance(0);
    EXPECT_EQ(table().numberOfSections(), 0U);
    EXPECT_EQ(list().title(), "");
}

TEST_F(AlbumsDetailScreenTest, OnlyTheAlbumsOnViewAreRead) {
    for (int album = 100; album < 300; ++album)
        addAlbum("Album " + std::to_string(album), 1990, {60, 60, 60});
    openTab(ZRNArtistsViewControllerIdentifier);
    library->evaluations = 0;
    choose(0, 0);
    EXPECT_EQ(list().queryDataSource()->count(), 600U);
    EXPECT_LT(library->evaluations, 20);
    table().scrollToRowAtIndexPath({150, 0}, true, false);
    advance(0);
    EXPECT_EQ(track(150, 0).title(), "Album 249 1");
    EXPECT_LT(library->evaluations, 40);
}

TEST_F(AlbumsDetailScreenTest, TheKnobReachesTheHeadersButton) {
    setUIMode(2);
    addAlbum("Ash", 1990, std::vector<double>(14, 60));
    addAlbum("Bay", 1991, {60, 60});
    openFirst(ZRNArtistsViewControllerIdentifier);
    auto& focus = window->focusSystem();
    focus.focus(cell(1, 1));
    window->turnKnob(13);
    EXPECT_EQ(focus.focusedItem(), headers().back()->shuffleButton());
    EXPECT_TRUE(table().bounds().contains(table().rectForHeaderInSection(2)));
    window->turnKnob(-1);
    EXPECT_EQ(focus.focusedItem(), cell(1, 13));
    window->turnKnob(2);
    EXPECT_EQ(focus.focusedItem(), cell(2, 0));
    pressKnob();
    EXPECT_EQ(playing(), "Bay 1");
}

}  // namespace
}  // namespace zornic
