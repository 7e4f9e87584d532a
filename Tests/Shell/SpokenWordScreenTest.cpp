#include "Platform/Toolkit/NavigationController.h"
#include "Tests/Support/FakeServiceProvider.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ViewControllerZornicAdditions.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "View Controllers/ZRNAudiobookPartsTableViewController.h"
#include "View Controllers/ZRNAudiobooksTableViewController.h"
#include "View Controllers/ZRNNowPlayingNavigationController.h"
#include "View Controllers/ZRNPodcastEpisodesTableViewController.h"
#include "View Controllers/ZRNPodcastsTableViewController.h"
#include "View Controllers/ZRNSonvaleUEpisodesTableViewController.h"
#include "View Controllers/ZRNSonvaleUTableViewController.h"

namespace zornic {
namespace {

using MediaItemProperty::AlbumTitle;
using MediaItemProperty::AlbumTrackCount;
using MediaItemProperty::AlbumTrackNumber;
using MediaItemProperty::Artist;
using MediaItemProperty::ArtworkToken;
using MediaItemProperty::BookmarkTime;
using MediaItemProperty::IsSonvaleU;
using MediaItemProperty::PlaybackDuration;
using MediaItemProperty::PodcastTitle;
using MediaItemProperty::ReleaseDate;
using MediaItemProperty::Title;
using Texts = std::vector<std::string>;

class SpokenWordScreenTest : public testing::Test, protected ScreenFixture {
protected:
    PersistentID add(const std::string& title, const std::string& artist, const std::string& album,
                     std::int64_t mediaType, Dictionary more = {}) {
        more.insert({{Title, title}, {Artist, artist}, {AlbumTitle, album}});
        more.emplace(MediaItemProperty::MediaType, mediaType);
        return library->addItem(std::move(more));
    }
    PersistentID addPart(std::int64_t number, Dictionary more = {}) {
        more.insert({{AlbumTrackNumber, number}, {AlbumTrackCount, 3}});
        more.try_emplace(PlaybackDuration, 3725.9);
        return add("File " + std::to_string(number), "Writer", "Book", MediaType::Audiobook, more);
    }
    template <class List>
    std::shared_ptr<List> open(const std::shared_ptr<MediaQuery>& query) {
        const auto root = make<List>(query, player, provider);
        stack = make<NavigationController>(root);
        show(stack);
        advance(0);  // for the covers of the rows that it has now
        return root;
    }
    /** The screen that a tap on a row leads to. */
    template <class List>
    std::shared_ptr<List> follow(TableViewController& list, const IndexPath& row) {
        tap(*list.tableView()->cellForRowAtIndexPath(row));
        advance(1);
        const auto next = std::dynamic_pointer_cast<List>(stack->topViewController());
        EXPECT_TRUE(next && next->player() == player && next->serviceProvider() == provider);
        return next;
    }
    /** Both lines of each row on view. */
    static Texts rows(TableViewController& list) {
        Texts texts;
        for (const auto& cell : list.tableView()->visibleCells()) texts.push_back(cell->accessibilityText());
        return texts;
    }
    /** A tap on a row plays the list's query from there, over the stack. */
    void expectPlaysFrom(ZRN_OLD_TableViewController& list, std::uint64_t row) {
        tap(*list.tableView()->cellForRowAtIndexPath({0, row}));
        advance(1);
        EXPECT_EQ(provider->asked, list.query());
        EXPECT_EQ(provider->given, (Dictionary{{"shuffleType", 0}, {"startIndex", row}}));
        const auto presented = stack->presentedViewController();
        ASSERT_TRUE(std::dynamic_pointer_cast<ZRNNowPlayingNavigationController>(presented));
        EXPECT_EQ(presented->lastPresentationTransition(), PresentationTransition::Rise);
    }

    const std::shared_ptr<FakeServiceProvider> provider = make<FakeServiceProvider>();
    std::shared_ptr<NavigationController> stack;
};

TEST_F(SpokenWordScreenTest, APodcastLeadsToItsOwnEpisodes) {
    using namespace std::chrono;
    const Date day = sys_days{2024y / March / 5} + 12h;
    for (const char* show : {"Byways", "Atlas"})
        for (const char* number : {"1", "2"})
            add(std::string(show) + " " + number, "Speaker", "Season", MediaType::Podcast,
                {{PodcastTitle, show}, {ReleaseDate, day}});
    add("Atlas 3", "Speaker", "Season", MediaType::Podcast, {{PodcastTitle, "Atlas"}});
    add("Chapter", "Writer", "Book", MediaType::Audiobook, {{PodcastTitle, "No podcast"}});
    const auto podcasts = open<ZRNPodcastsTableViewController>(MediaQuery::podcastsQuery());
    EXPECT_EQ(rows(*podcasts), (Texts{"Atlas, Speaker", "Byways, Speaker"}));
    const int fetches = library->fetches;
    podcasts->tableView()->reloadData();
    advance(0);
    EXPECT_EQ(library->fetches, fetches + 2) << "a row reads all its values in one go";

    const auto episodes = follow<ZRNPodcastEpisodesTableViewController>(*podcasts, {0, 0});
    EXPECT_EQ(episodes->title(), "Atlas");
    EXPECT_EQ(rows(*episodes), (Texts{"Atlas 1, March 5, 2024", "Atlas 2, March 5, 2024", "Atlas 3"}));
    EXPECT_EQ(episodes->query()->groupingType(), MediaGrouping::Title);
    expectPlaysFrom(*episodes, 1);
}

TEST_F(SpokenWordScreenTest, ASectionedListHasNoDisclosureIndicators) {
    for (const char letter : std::string("ABCDEFGHIJ"))
        add("Episode", "Speaker", "Season", MediaType::Podcast, {{PodcastTitle, std::string(1, letter)}});
    const auto podcasts = open<ZRNPodcastsTableViewController>(MediaQuery::podcastsQuery());
    ASSERT_TRUE(podcasts->isSectioning());
    EXPECT_EQ(podcasts->tableView()->visibleCells().front()->accessoryType(), TableViewCellAccessory::None);
    EXPECT_EQ(follow<ZRNPodcastEpisodesTableViewController>(*podcasts, {2, 0})->title(), "C");
}

TEST_F(SpokenWordScreenTest, PartsSayWhichOfHowManyAndWhatIsLeft) {
    for (const int number : {1, 2})
        add("Other", "Writer", "Another Book", MediaType::Audiobook,
            {{AlbumTrackNumber, number}, {AlbumTrackCount, 7}, {PlaybackDuration, 59.9}});
    addPart(1, {{BookmarkTime, 0}});
    const auto one = addPart(2, {{BookmarkTime, 3600.5}});
    const auto several = addPart(3, {{BookmarkTime, 3725.9}});
    addPart(5, {{PlaybackDuration, 59.9}});
    library->chapters[addPart(0)] = {{0}};
    library->chapters[one] = {{3}};
    library->chapters[several] = {{4}, {5}, {1233}};

    const auto books = open<ZRNAudiobooksTableViewController>(MediaQuery::audiobooksQuery());
    EXPECT_EQ(rows(*books), (Texts{"Another Book, Writer", "Book, Writer"}));
    EXPECT_EQ(books->tableView()->visibleCells().front()->textLabel()->lineBreakMode(),
              LineBreakMode::TruncatingMiddle);
    const auto parts = follow<ZRNAudiobookPartsTableViewController>(*books, {0, 1});
    EXPECT_EQ(parts->title(), "Book");
    EXPECT_EQ(parts->query()->groupingType(), MediaGrouping::Album);
    EXPECT_EQ(rows(*parts),
              (Texts{"File 0, 1:02:05", "Part 1 of 5, 1:02:05 left", "Part 2 of 5: chapter 4, 2:05 left",
                     "Part 3 of 5: chapters 5 to 1,234, 1:02:05", "Part 5 of 5, 0:59"}));
    expectPlaysFrom(*parts, 3);
    stack->dismissViewController(false);
    stack->popViewControllerAnimated(false);
    advance(1);
    const auto first = follow<ZRNAudiobookPartsTableViewController>(*books, {0, 0});
    EXPECT_EQ(rows(*first), (Texts{"Part 1 of 7, 0:59", "Part 2 of 7, 0:59"})) << "five are missing";
}

TEST_F(SpokenWordScreenTest, LecturesShowTheirLength) {
    const Dictionary lecture = {{IsSonvaleU, true}, {PlaybackDuration, 2700.7}};
    add("Lecture 1", "Teacher", "Botany", MediaType::Lecture, lecture);
    add("Lecture 2", "Teacher", "Botany", MediaType::Lecture, lecture);
    add("Talk", "Teacher", "", MediaType::Lecture,
        {{IsSonvaleU, true}, {MediaItemProperty::AlbumPersistentID, 7}});
    const auto lectures = open<ZRNSonvaleUTableViewController>(ZRN_queryForIdentifier("sonvaleu"));
    EXPECT_EQ(rows(*lectures), (Texts{"Botany, Teacher", "Teacher"}));
    EXPECT_EQ(follow<ZRNSonvaleUEpisodesTableViewController>(*lectures, {0, 1})->title(), "Unknown album");
    stack->popViewControllerAnimated(false);
    advance(1);
    const auto episodes = follow<ZRNSonvaleUEpisodesTableViewController>(*lectures, {0, 0});
    EXPECT_EQ(episodes->title(), "Botany");
    EXPECT_EQ(rows(*episodes), (Texts{"Lecture 1, 45:00", "Lecture 2, 45:00"}));
    EXPECT_EQ(episodes->query()->groupingType(), MediaGrouping::Title);
    expectPlaysFrom(*episodes, 0);
}

TEST_F(SpokenWordScreenTest, ACoverTakesThePlaceholdersPlaceOnceItIsLoaded) {
    library->artwork.insert("cover");
    addPart(1, {{ArtworkToken, "cover"}});
    const auto books = open<ZRNAudiobooksTableViewController>(MediaQuery::audiobooksQuery());
    const auto shown = [&] {
        const auto cell = books->tableView()->visibleCells().front();
        return std::dynamic_pointer_cast<ImageView>(cell->viewWithTag(500))->image();
    };
    EXPECT_EQ(library->loadedArtwork(), Texts{"cover"});
    EXPECT_NE(shown(), ZRNAlbumPlaceholderImageWithStyle(0));
    ArtworkCatalog::evictAll();
    books->tableView()->reloadData();
    window->layoutIfNeeded();
    EXPECT_EQ(shown(), ZRNAlbumPlaceholderImageWithStyle(0));
    advance(0);
    EXPECT_NE(shown(), ZRNAlbumPlaceholderImageWithStyle(0));
}

TEST_F(SpokenWordScreenTest, WhatHasJustGoneFromTheLibraryLeadsNowhere) {
    const auto part = addPart(1);
    const auto books = open<ZRNAudiobooksTableViewController>(MediaQuery::audiobooksQuery());
    library->removeItem(part);
    tap(*books->tableView()->cellForRowAtIndexPath({0, 0}));
    advance(1);
    EXPECT_EQ(stack->topViewController(), books);
    EXPECT_TRUE(books->tableViewCellForRowAtIndexPath(*books->tableView(), {0, 0}));
}

}  // namespace
}  // namespace zornic
