#include <thread>

#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Platform/Toolkit/AlertController.h"
#include "Tests/Support/FakeServiceProvider.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ViewControllerZornicAdditions.h"
#include "View Controllers/ZRNBrowserTabs.h"
#include "View Controllers/ZRNBrowserViewController.h"
#include "View Controllers/ZRNNowPlayingNavigationController.h"
#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace zornic {
namespace {

using Names = std::vector<std::string>;
using Screens = std::vector<std::shared_ptr<ViewController>>;

class HostTabs final : public TabBarController {
public:
    std::optional<Names> textsForKey(const std::string& key) const override {
        return key == "visibleViewControllerIdentifiers" ? names : std::nullopt;
    }
    std::optional<Names> names;
};

class AlbumList final : public ZRN_OLD_TableViewController {
public:
    using ZRN_OLD_TableViewController::ZRN_OLD_TableViewController;
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& table,
                                                                  const IndexPath& path) override {
        return dequeueReusableHelmoCellForTableViewIndexPath(table, path);
    }
};

class RadioAlert final : public RadioAlertView {
public:
    std::string title() const override { return "Radio"; }
    std::string message() const override { return "No stations"; }
    void dismiss(int buttonIndex, bool animated) override {
        dismissals.emplace_back(buttonIndex, animated);
        if (const auto told = delegate.lock()) told->didDismissAlertView(strong(this));
    }
    std::weak_ptr<RadioAlertViewDelegate> delegate;
    std::vector<std::pair<int, bool>> dismissals;
};

class BrowserTest : public testing::Test, protected ScreenFixture {
protected:
    BrowserTest() { ZRN_registerViewControllerIdentifiers(); }

    void open(const std::shared_ptr<TabBarController>& host = nullptr) {
        browser = make<ZRNBrowserViewController>(host);
        show(browser);
    }
    const Screens& tabs() const { return browser->tabs()->viewControllers(); }
    Names tabIdentifiers() const {
        Names names;
        for (const auto& tab : tabs()) names.push_back(tab->identifier());
        return names;
    }
    std::shared_ptr<QueryTableViewController> songs() const {
        for (const auto& tab : tabs())
            if (tab->identifier() == ZRNSongsViewControllerIdentifier)
                return std::dynamic_pointer_cast<QueryTableViewController>(tab);
        return nullptr;
    }
    static bool showsNoContent(const std::shared_ptr<ViewController>& tab) {
        return std::ranges::any_of(tab->view()->subviews(), [](const auto& view) {
            return std::dynamic_pointer_cast<ZRNNoContentView>(view) != nullptr;
        });
    }
    void postTabOrder(const std::shared_ptr<Object>& sender) {
        NotificationCenter::defaultCenter().post(
            MusicTabBarControllerDidChangeOrderedViewControllerIdentifiersNotification, sender);
    }
    void libraryDidChange() {
        std::thread([&] { library->postDidChange(); }).join();
        advance(1);
    }
    bool showsNowPlaying() const {
        return std::dynamic_pointer_cast<ZRNNowPlayingNavigationController>(
                   browser->presentedViewController()) != nullptr;
    }

    std::shared_ptr<ZRNBrowserViewController> browser;
};

TEST_F(BrowserTest, WithoutAHostsTabsItHasItsOwn) {
    addSongs({"A"});
    open();
    EXPECT_TRUE(browser->isNavigationBarHidden());
    ASSERT_TRUE(songs());
    EXPECT_EQ(songs()->title(), "Songs");
    EXPECT_EQ(tabIdentifiers(),
              (Names{ZRNPlaylistsViewControllerIdentifier, ZRNArtistsViewControllerIdentifier,
                     ZRNSongsViewControllerIdentifier, ZRNAlbumsViewControllerIdentifier,
                     ZRNGenresViewControllerIdentifier, ZRNCompilationsViewControllerIdentifier,
                     ZRNComposersViewControllerIdentifier}))
        << "radio when it has a screen";
    Names selectedImages;
    for (const auto& tab : tabs()) {
        const auto& item = *tab->tabBarItem();
        EXPECT_EQ(item.image.renderingMode(), ImageRenderingMode::AlwaysTemplate) << item.title;
        const bool drawn = item.selectedImage.renderingMode() == ImageRenderingMode::AlwaysOriginal;
        selectedImages.push_back(item.selectedImage.name() + (drawn ? " as it is" : ""));
    }
    EXPECT_EQ(selectedImages, (Names{"HelmoPlaylistsTabOn", "", "", "HelmoAlbumsTabOn as it is", "", "",
                                     "HelmoComposersTabOn"}));
    EXPECT_EQ(tabs()[1]->title(), "") << "artists leave their screen untitled";
    EXPECT_EQ(tabs()[1]->tabBarItem()->title, "Artists");
    const auto more = browser->tabs()->moreNavigationController()->tabBarItem();
    for (const auto& image : {more->image, more->selectedImage})
        EXPECT_EQ(image.renderingMode(), ImageRenderingMode::AlwaysOriginal);
    EXPECT_EQ(browser->_createViewControllerForIdentifier("songs"), nullptr) << "a host's name";
    EXPECT_EQ(browser->_createViewControllerForIdentifier(ZRNAlbumsDetailViewControllerIdentifier), nullptr);
}

TEST_F(BrowserTest, TabsFollowTheHosts) {
    addSongs({"A"});
    auto host = make<HostTabs>();
    host->names = Names{"podcasts", "songs", "shared", "playlistsongs", "sonvaleu", "songs"};
    open(host);
    EXPECT_EQ(tabIdentifiers(), Names(3, ZRNSongsViewControllerIdentifier));
    EXPECT_NE(tabs()[0], tabs()[1]);
    browser->tabBarControllerDidSelectViewController(*browser->tabs(), tabs()[0]);
    EXPECT_EQ(browser->tabs()->title(), "Songs");

    host->names = Names{"songs"};
    postTabOrder(make<HostTabs>());
    EXPECT_EQ(tabs().size(), 3U) << "another container's order";
    const auto before = tabs()[0];
    postTabOrder(host);
    ASSERT_EQ(tabs().size(), 1U);
    EXPECT_NE(tabs()[0], before) << "made anew";
    const auto first = tabs()[0];
    NotificationCenter::defaultCenter().post(RadioOptInDidChangeNotification, nullptr);
    EXPECT_NE(tabs()[0], first);

    host->names.reset();
    postTabOrder(host);
    EXPECT_TRUE(tabs().empty()) << "no list is an empty one";
    advance(0);
    host = nullptr;
    NotificationCenter::defaultCenter().post(RadioOptInDidChangeNotification, nullptr);
    EXPECT_TRUE(songs()) << "its own once the host has gone";
}

TEST_F(BrowserTest, ListsOfTheOldKindAreTabsToo) {
    setUIMode(2);
    using namespace MediaPlaylistProperty;
    for (const bool active : {true, false})
        library->addPlaylist(active ? "Now" : "Mix", {},
                             {{IsBrivoMix, true}, {IsActiveBrivoPlaylist, active}});
    library->addSong("A", "Anna", "Ash", 1, {{MediaItemProperty::IsCompilation, true}});
    const auto host = make<HostTabs>();
    host->names = Names{"brivomix", "audiobooks", "compilations"};
    browser = make<ZRNBrowserViewController>(host);
    browser->setPlayer(player);
    const auto provider = make<FakeServiceProvider>();
    browser->setServiceProvider(provider);
    show(browser);
    Names classes;
    for (const auto& tab : tabs()) {
        classes.push_back(tab->className());
        const auto list = std::dynamic_pointer_cast<ZRN_OLD_TableViewController>(tab);
        ASSERT_TRUE(list);
        EXPECT_TRUE(list->player() == player && list->serviceProvider() == provider);
    }
    EXPECT_EQ(classes, (Names{"ZRNBrivoMixesViewController", "ZRNAudiobooksTableViewController",
                              "ZRNCompilationsTableViewController"}));
    const auto mixes = std::dynamic_pointer_cast<TableViewController>(tabs()[0])->tableView();
    ASSERT_EQ(mixes->visibleCells().size(), 1U) << "not the one that fills itself while it plays";
    EXPECT_EQ(mixes->visibleCells().front()->textLabel()->text(), "Mix");

    window->focusSystem().focus(browser->tabs()->tabBar()->buttons()[2]);
    pressKnob();
    const auto compilations = std::dynamic_pointer_cast<TableViewController>(tabs()[2])->tableView();
    EXPECT_EQ(window->focusSystem().focusedItem(), compilations->visibleCells().front())
        << "the knob goes on in the list";
}

TEST_F(BrowserTest, EmptyCategoriesSaySoUntilThereAreSongs) {
    library->addPlaylist("List", {});
    open();
    EXPECT_FALSE(browser->libraryHasSongs());
    auto empty = songs();
    ASSERT_TRUE(showsNoContent(empty));
    ASSERT_TRUE(showsNoContent(tabs()[0])) << "playlists of nothing are no content";
    const auto shown = browser->noContentViewForScreen(tabs()[0]);
    EXPECT_EQ(shown->frame(), tabs()[0]->view()->bounds());
    auto &title = *shown->titleLabel(), &subtitle = *shown->subtitleLabel();
    EXPECT_EQ(title.text(), "Nothing here yet");
    EXPECT_EQ(title.frame().x(), 12);
    EXPECT_EQ(subtitle.frame().maxX(), 800 - 12);
    EXPECT_NEAR(subtitle.frame().y() + subtitle.firstBaselineFromTop() -
                    (title.frame().y() + title.firstBaselineFromTop()),
                28, 0.5);
    EXPECT_NEAR((title.frame().y() + subtitle.frame().maxY()) / 2, shown->bounds().midY() - 11, 0.5);

    addSongs({"A"});
    libraryDidChange();
    EXPECT_TRUE(browser->libraryHasSongs());
    EXPECT_NE(songs(), empty);
    EXPECT_FALSE(showsNoContent(songs()));
    const std::weak_ptr<ViewController> gone = empty;
    empty = nullptr;
    EXPECT_TRUE(gone.expired());

    const auto full = songs();
    addSongs({"B"});
    libraryDidChange();
    EXPECT_EQ(songs(), full) << "still has songs: no need for other tabs";
    EXPECT_EQ(full->queryDataSource()->count(), 2U);
}

TEST_F(BrowserTest, ACategoryThatFillsOrEmptiesLaterSaysSoToo) {
    library->addItem(
        {{MediaItemProperty::Title, "Chapter 1"}, {MediaItemProperty::MediaType, MediaType::Audiobook}});
    open();
    const auto list = songs();
    ASSERT_TRUE(showsNoContent(list)) << "a library with books alone has no songs to list";

    addSongs({"A"});
    libraryDidChange();
    EXPECT_FALSE(showsNoContent(list));
    library->removeItem(MediaQuery::songsQuery()->items()->entityAtIndex(0)->persistentID());
    libraryDidChange();
    EXPECT_TRUE(showsNoContent(list));
}

TEST_F(BrowserTest, WithoutForceScreensAreUsedAgainAndStandTwice) {
    open();
    const auto list = songs();
    EXPECT_TRUE(showsNoContent(list));
    addSongs({"A"});
    list->queryDataSource()->invalidate();
    browser->reloadWithTabsForceReload({"unknown", ZRNSongsViewControllerIdentifier}, false);
    EXPECT_EQ(tabs(), Screens(2, list));
    EXPECT_FALSE(showsNoContent(list));
    advance(0);
    EXPECT_TRUE(list->tableView()->cellForRowAtIndexPath({0, 0}));
    browser->reloadWithTabsForceReload({ZRNSongsViewControllerIdentifier}, true);
    EXPECT_EQ(tabs().size(), 1U);
    EXPECT_NE(tabs()[0], list);
}

TEST_F(BrowserTest, TheButtonStandsBesideTheTabsWhileSomethingIsLoaded) {
    const auto query = addSongs({"A"});
    browser = make<ZRNBrowserViewController>(nullptr);
    browser->setPlayer(player);
    play(query);
    EXPECT_EQ(browser->tabs()->accessoryView(), nullptr) << "not before it is on view";
    show(browser);
    EXPECT_EQ(browser->tabs()->accessoryView(), browser->nowPlayingButton());
    player->stop();
    advance(0);
    EXPECT_EQ(browser->tabs()->accessoryView(), nullptr);
    play(query);
    tap(*browser->nowPlayingButton());
    const auto presented = browser->presentedViewController();
    browser->pushNowPlaying(true);
    EXPECT_EQ(browser->presentedViewController(), presented) << "one at a time";
    const auto other = make<AVController>(make<ClockedPlaybackEngine>());
    browser->setPlayer(other);
    player->stop();
    advance(0);
    EXPECT_NE(browser->tabs()->accessoryView(), nullptr) << "the former player is not followed any more";
}

TEST_F(BrowserTest, WhatPlaysIsShownOnceThereIsEverythingItNeeds) {
    const auto query = addSongs({"A"});
    auto provider = make<FakeServiceProvider>();
    open();
    browser->setServiceProvider(provider);
    browser->setPlayer(player);
    EXPECT_FALSE(showsNowPlaying()) << "nothing plays";
    play(query);
    EXPECT_FALSE(showsNowPlaying()) << "playing alone does not take the display";
    browser->setPlayer(nullptr);
    browser->setPlayer(player);
    EXPECT_TRUE(showsNowPlaying());
    EXPECT_EQ(browser->presentedViewController()->lastPresentationTransition(), PresentationTransition::None);
    browser->dismissViewController(false);

    auto before = tabs();
    browser->setServiceProvider(provider);
    EXPECT_FALSE(showsNowPlaying()) << "nothing new";
    EXPECT_EQ(tabs(), before);
    before.clear();
    browser->reloadWithTabsForceReload({}, true);
    provider = nullptr;
    EXPECT_EQ(browser->serviceProvider(), nullptr) << "only lists hold it";
    browser->pushNowPlaying(true);
    EXPECT_FALSE(showsNowPlaying());
    const auto next = make<FakeServiceProvider>();
    browser->setServiceProvider(next);
    EXPECT_TRUE(showsNowPlaying());
    EXPECT_FALSE(tabs().empty());
}

TEST_F(BrowserTest, PushedListsThatBecameEmptyArePopped) {
    const auto ofArtist = [&](const std::string& artist) {
        const auto query = MediaQuery::albumsQuery();
        query->addFilterPredicate(MediaPredicate::property(MediaItemProperty::Artist, artist));
        return make<AlbumList>(query, player, nullptr);
    };
    library->addSong("A", "Anna", "One");
    const auto cleos = library->addSong("B", "Cleo", "Two");
    open();
    const auto anna = ofArtist("Anna"), cleo = ofArtist("Cleo");
    const Screens pushed = {anna, make<ViewController>(), cleo, make<ViewController>()};
    for (const auto& next : pushed) browser->pushViewController(next, false);
    const auto& more = browser->tabs()->moreNavigationController();
    const auto tab = ofArtist("nobody");
    for (const auto& next : {tab, ofArtist("Cleo")}) more->pushViewController(next, false);
    advance(0);

    library->addSong("C", "Anna", "Three");
    libraryDidChange();
    EXPECT_EQ(browser->topViewController(), pushed.back());
    EXPECT_EQ(anna->tableView()->numberOfRowsInSection(0), 2U) << "lists below follow";
    library->removeItem(cleos);
    libraryDidChange();
    EXPECT_EQ(browser->topViewController(), pushed[1]) << "the list and all above it";
    EXPECT_TRUE(pushed[1]->hasAppeared());
    EXPECT_EQ(more->topViewController(), tab) << "under the overflow tab too, but for the tab's own list";
}

TEST_F(BrowserTest, RadioAlertsAreMirrored) {
    open();
    const auto radio = make<RadioAlert>();
    radio->delegate = weak<RadioAlertViewDelegate>(browser.get());
    const auto mirror = [&] {
        browser->willPresentAlertView(radio);
        advance(1);
        return std::dynamic_pointer_cast<AlertController>(browser->presentedViewController());
    };
    auto alert = mirror();
    ASSERT_TRUE(alert && alert->actions().size() == 1);
    EXPECT_EQ(alert->title() + ": " + alert->message(), "Radio: No stations");
    EXPECT_EQ(alert->actions()[0]->style(), AlertActionStyle::Cancel);
    alert->choose(alert->actions()[0]);
    advance(1);
    EXPECT_EQ(radio->dismissals, (std::vector<std::pair<int, bool>>{{-1, true}}));
    EXPECT_EQ(browser->presentedViewController(), nullptr);

    ASSERT_TRUE(mirror());
    browser->didDismissAlertView(radio);
    advance(1);
    EXPECT_EQ(browser->presentedViewController(), nullptr);
    EXPECT_EQ(radio->dismissals.size(), 1U);

    browser->ZRN_pushNowPlayingViewControllerAnimated(true);
    advance(1);
    browser->didDismissAlertView(radio);
    advance(1);
    EXPECT_TRUE(showsNowPlaying()) << "no alert was mirrored, so nothing goes";
}

TEST_F(BrowserTest, ABrowserThatGoesLeavesNothingBehind) {
    addSongs({"A"});
    open();
    browser->setPlayer(player);
    const auto container = browser->tabs();
    library->postDidChange();
    window->setRootViewController(nullptr);
    const std::weak_ptr<ViewController> gone = browser;
    browser = nullptr;
    EXPECT_FALSE(gone.expired()) << "the change on its way keeps it";
    advance(0);
    EXPECT_TRUE(gone.expired());
    library->postDidChange();
    NotificationCenter::defaultCenter().post(RadioOptInDidChangeNotification, nullptr);
    play(MediaQuery::songsQuery());
    advance(0);
}

}  // namespace
}  // namespace zornic
