#include "Cell Configurations/ZRNSongCellConfiguration.h"
#include "Data Sources/ZRNQueryDataSource.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "View Controllers/ZRNMusicNowPlayingViewController.h"
#include "View Controllers/ZRNSectionedTableViewController.h"
#include "View Controllers/ZRNTableViewController.h"
#include "Views/ZRNActionTableViewCell.h"

namespace zornic {
namespace {

/** The older kind of list over albums, with as many action rows as a test wants. */
class Albums final : public ZRNSectionedTableViewController {
public:
    using ZRNSectionedTableViewController::ZRNSectionedTableViewController;
    std::uint64_t countOfActions() const override { return actions; }
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& table,
                                                                  const IndexPath& path) override {
        const auto cell = dequeueReusableHelmoCellForTableViewIndexPath(table, path);
        cell->textLabel()->setText("row " + std::to_string(rowAtIndexPath(path)));
        return cell;
    }
    std::shared_ptr<ViewController> viewControllerForRowAtIndexPath(const IndexPath&) override {
        return next;
    }
    std::uint64_t actions = 0;
    std::shared_ptr<ViewController> next;
};

class Stack final : public NavigationController {
public:
    using NavigationController::NavigationController;
    void ZRN_pushNowPlayingViewControllerAnimated(bool animated) override { requests.push_back(animated); }
    std::vector<bool> requests;
};

class TableViewControllersTest : public testing::Test, protected ScreenFixture {
protected:
    std::shared_ptr<ZRNTableViewController> songs() {
        return make<ZRNTableViewController>(
            make<ZRNQueryDataSource>(MediaQuery::songsQuery(), EntityType::Items),
            ZRNSongCellConfiguration::instance());
    }
    std::shared_ptr<Albums> albums() { return make<Albums>(MediaQuery::albumsQuery(), player, nullptr); }
    /** One album for each letter of `letters`, beginning with it. */
    void addAlbums(const std::string& letters) {
        for (const char letter : letters)
            library->addSong("Song", "Artist", letter + std::to_string(++_albums));
    }
    void pop(NavigationController& stack) {
        stack.popViewControllerAnimated(true);
        advance(1);
    }
    void push(NavigationController& stack, const std::shared_ptr<ViewController>& next) {
        stack.pushViewController(next, true);
        advance(1);
    }
    static std::shared_ptr<View> barButton(ViewController& list) {
        return list.navigationItem()->rightBarButtonItem()->customView();
    }
    void expectBarOnPushedScreensOnly(const std::shared_ptr<ViewController>& bottom,
                                      const std::shared_ptr<ViewController>& pushed) {
        const auto stack = make<NavigationController>(bottom);
        show(stack);
        EXPECT_TRUE(stack->isNavigationBarHidden());
        push(*stack, pushed);
        EXPECT_FALSE(stack->isNavigationBarHidden());
        pop(*stack);
        EXPECT_TRUE(stack->isNavigationBarHidden());
    }

private:
    int _albums = 0;
};

TEST_F(TableViewControllersTest, TheBarIsHiddenOnTheBottomScreen) {
    addAlbums("AB");
    expectBarOnPushedScreensOnly(songs(), songs());
    expectBarOnPushedScreensOnly(albums(), albums());
    const auto always = albums();
    always->setAlwaysShowNavBar(true);
    const auto stack = make<NavigationController>(always);
    show(stack);
    EXPECT_FALSE(stack->isNavigationBarHidden());
}

TEST_F(TableViewControllersTest, TheButtonIsThereWhileSomethingIsLoaded) {
    const auto query = addSongs({"A", "B"});
    const auto current = songs();
    const auto old = albums();
    const auto stack = make<Stack>(make<ViewController>());
    show(stack);
    push(*stack, current);
    EXPECT_FALSE(barButton(*current)->isHidden()) << "left as made until the item changes";
    play(query);
    EXPECT_FALSE(barButton(*current)->isHidden());
    player->stop();
    advance(0);
    EXPECT_TRUE(barButton(*current)->isHidden());

    push(*stack, old);
    EXPECT_TRUE(barButton(*old)->isHidden());
    play(query);
    EXPECT_FALSE(barButton(*old)->isHidden());
    const auto before = barButton(*old);
    pop(*stack);
    EXPECT_NE(barButton(*current), nullptr);
    push(*stack, old);
    EXPECT_NE(barButton(*old), before) << "made anew for each appearance";
    player->stop();
    advance(0);
    pop(*stack);
    play(query);
    EXPECT_TRUE(barButton(*old)->isHidden()) << "what has gone does not follow the player";
}

TEST_F(TableViewControllersTest, TheButtonLeadsToNowPlaying) {
    const auto query = addSongs({"A"});
    const auto current = songs();
    const auto old = albums();
    const auto stack = make<Stack>(make<ViewController>());
    show(stack);
    play(query);
    push(*stack, current);
    tap(*barButton(*current)->subviews().front());
    EXPECT_EQ(stack->requests, std::vector<bool>{true});
    push(*stack, old);
    tap(*barButton(*old)->subviews().front());
    advance(1);
    EXPECT_TRUE(std::dynamic_pointer_cast<ZRNMusicNowPlayingViewController>(stack->topViewController()));

    old->_presentNowPlayingViewController();
    EXPECT_EQ(stack->presentedViewController(), nullptr) << "the list is not on view";
    pop(*stack);
    old->_presentNowPlayingViewController();
    advance(1);
    const auto presented = stack->presentedViewController();
    EXPECT_TRUE(std::dynamic_pointer_cast<ZRNNowPlayingNavigationController>(presented));
    old->_presentNowPlayingViewController();
    EXPECT_EQ(stack->presentedViewController(), presented);
}

TEST_F(TableViewControllersTest, TheKnobLeavesAListOnlyAtTheEndsOfASection) {
    std::vector<std::string> titles;
    for (int i = 10; i < 30; ++i) titles.push_back("A" + std::to_string(i));
    addSongs(titles);
    const auto list = songs();
    show(list);
    auto& table = *list->tableView();
    const std::shared_ptr<View> button = make<Button>(ButtonType::System),
                                cell = table.visibleCells().front();
    struct Case {
        std::shared_ptr<View> next;
        IndexPath from;
        bool allowed;
    };
    for (const auto& [next, from, allowed] :
         {Case{button, {0, 0}, true}, Case{button, {0, 5}, false}, Case{button, {0, 18}, false},
          Case{button, {0, 19}, true}, Case{cell, {0, 5}, true}, Case{nullptr, {0, 5}, true},
          Case{button, {}, true}})
        EXPECT_EQ(list->tableViewShouldChangeFocusedItemFromRowAtIndexPath(table, next, from), allowed);
}

TEST_F(TableViewControllersTest, TheChosenRowStaysMarkedUntilTheListIsBack) {
    addAlbums("ABC");
    const auto list = albums();
    list->next = make<ViewController>();
    const auto stack = make<NavigationController>(list);
    show(stack);
    tap(*list->tableView()->cellForRowAtIndexPath({0, 1}));
    advance(1);
    ASSERT_EQ(stack->topViewController(), list->next);
    const std::vector chosen = {IndexPath{0, 1}};
    EXPECT_EQ(list->tableView()->indexPathsForSelectedRows(), chosen);
    EXPECT_FALSE(list->viewHasAppeared());

    const auto swipe = [&](double to) {
        window->touchDown({2, 200});
        for (const double x : {20.0, 60.0, to}) {
            window->touchMove({x, 200});
            advance(0.1);
        }
        advance(0.5);
        window->touchUp({to, 200});
        advance(1);
    };
    swipe(100);
    ASSERT_EQ(stack->topViewController(), list->next) << "let go half-way";
    EXPECT_EQ(list->tableView()->indexPathsForSelectedRows(), chosen);
    EXPECT_FALSE(list->viewHasAppeared());
    swipe(700);
    ASSERT_EQ(stack->topViewController(), list);
    EXPECT_TRUE(list->tableView()->indexPathsForSelectedRows().empty());
    EXPECT_TRUE(list->viewHasAppeared());
    list->next = nullptr;
    tap(*list->tableView()->cellForRowAtIndexPath({0, 2}));
    EXPECT_EQ(stack->topViewController(), list) << "a row without a screen";
}

TEST_F(TableViewControllersTest, SeparatorsAndTextsMakeRoomForPictures) {
    const auto cell = make<ZRNTableViewCell>(TableViewCellStyle::Default, "row");
    cell->setSeparatorInset({0, 15, 0, 0});
    const auto inset = [&](const Image& image) {
        cell->setArtworkImage(image);
        cell->setFrame({0, 0, 400, 44});
        cell->layoutIfNeeded();
        return cell->separatorInset().left;
    };
    const Image single = ZRNAlbumPlaceholderImageWithStyle(0),
                twoLines = ZRNAlbumPlaceholderImageWithStyle(1);
    EXPECT_EQ(inset(single), 57);
    EXPECT_EQ(cell->artworkImageView()->frame(), Rect(12, 4, 36, 36));
    EXPECT_GE(cell->textLabel()->convertToWindow(cell->textLabel()->bounds()).x(), 57);
    EXPECT_FALSE(ZRNAlbumPlaceholderImageWithStyle(2));
    const auto view = cell->artworkImageView();
    EXPECT_EQ(inset(twoLines), 57);
    EXPECT_EQ(cell->artworkImageView(), view) << "another picture in the same view";
    EXPECT_EQ(inset({}), 15);
    EXPECT_EQ(view->superview(), nullptr);
    EXPECT_EQ(inset(single), 57);
    EXPECT_EQ(inset({}), 15);
}

TEST_F(TableViewControllersTest, OldRowsHaveOnePictureAtMost) {
    addAlbums("A");
    const auto list = albums();
    show(list);
    const auto cell = list->tableView()->cellForRowAtIndexPath({0, 0});
    const auto item = list->query()->items()->entityAtIndex(0)->representativeItem();
    const auto first = Albums::addAlbumArtViewFromItemToCellRowHeight(item, cell, 44);
    const auto second = Albums::addAlbumArtViewFromItemToCellRowHeight(nullptr, cell, 45);
    EXPECT_EQ(first->superview(), nullptr);
    EXPECT_EQ(second->frame(), Rect(12, 4, 36, 36));
    EXPECT_EQ(second->image(), ZRNAlbumPlaceholderImageWithStyle(1)) << "a row of two lines";
    EXPECT_EQ(cell->separatorInset().left, 57);
    EXPECT_EQ(Albums::addAlbumArtViewWithImageToCellRowHeight({}, cell, 44), nullptr);
    EXPECT_EQ(Albums::addAlbumArtViewFromItemToCellRowHeight(item, nullptr, 44), nullptr);
    list->tableView()->reloadData();
    EXPECT_EQ(second->superview(), nullptr) << "a reused row has none";
}

TEST_F(TableViewControllersTest, TenSectionsMakeASectionedList) {
    addAlbums("AABCDEFGHI");
    const auto flat = albums();
    auto& table = *flat->tableView();
    EXPECT_FALSE(flat->isSectioning());
    EXPECT_EQ(flat->numberOfSectionsInTableView(table), 1U);
    EXPECT_TRUE(flat->sectionIndexTitlesForTableView(table).empty());
    EXPECT_EQ(flat->tableViewTitleForHeaderInSection(table, 0), std::nullopt);
    EXPECT_EQ(flat->tableViewSectionForSectionIndexTitleAtIndex(table, "C", 2), 0U);
    flat->actions = 2;
    EXPECT_EQ(flat->tableViewNumberOfRowsInSection(table, 0), 12U);
    EXPECT_EQ(flat->rowAtIndexPath({0, 1}), 1U);
    EXPECT_EQ(flat->rowAtIndexPath({0, 2}), 2U);

    addAlbums("J");
    EXPECT_FALSE(flat->isSectioning()) << "decided when it was made";
    const auto sectioned = albums();
    EXPECT_EQ(sectioned->numberOfSectionsInTableView(table), 10U);
    EXPECT_EQ(sectioned->sectionIndexTitlesForTableView(table).size(), 10U);
    EXPECT_EQ(sectioned->tableViewTitleForHeaderInSection(table, 1), "B");
    EXPECT_EQ(sectioned->rowAtIndexPath({2, 0}), 3U);
    EXPECT_EQ(sectioned->tableViewSectionForSectionIndexTitleAtIndex(table, "C", 2), 2U);

    sectioned->actions = 2;
    EXPECT_EQ(sectioned->numberOfSectionsInTableView(table), 11U);
    EXPECT_EQ(sectioned->tableViewNumberOfRowsInSection(table, 0), 2U);
    EXPECT_EQ(sectioned->tableViewTitleForHeaderInSection(table, 0), std::nullopt);
    EXPECT_EQ(sectioned->tableViewTitleForHeaderInSection(table, 1), "A");
    EXPECT_EQ(sectioned->rowAtIndexPath({0, 1}), 1U);
    EXPECT_EQ(sectioned->rowAtIndexPath({1, 0}), 2U);
    EXPECT_EQ(sectioned->rowAtIndexPath({3, 0}), 5U);
    EXPECT_EQ(sectioned->tableViewSectionForSectionIndexTitleAtIndex(table, "A", 0), 0U);
    EXPECT_EQ(sectioned->tableViewSectionForSectionIndexTitleAtIndex(table, "C", 2), 1U)
        << "one early, as ever";
}

TEST_F(TableViewControllersTest, ASectionedListFollowsTheLibrary) {
    addAlbums("ABCDEFGHIJ");
    const auto list = albums();
    show(list);
    const auto saysItIsEmpty = [&] {
        return std::ranges::any_of(list->view()->subviews(), [](const auto& view) {
            return view->className() == "ZRNNoContentView" && !view->frame().empty();
        });
    };
    EXPECT_FALSE(saysItIsEmpty());
    addAlbums("KLMA");
    list->refreshRows();
    advance(0);
    EXPECT_EQ(list->numberOfSectionsInTableView(*list->tableView()), 13U);
    EXPECT_EQ(list->rowAtIndexPath({0, 1}), 1U);
    EXPECT_EQ(list->rowAtIndexPath({12, 0}), 13U) << "behind both that begin with A";
    list->tableView()->scrollToRowAtIndexPath({12, 0}, true, false);
    advance(0);

    for (std::uint64_t i = list->query()->items()->count(); i-- > 0;)
        library->removeItem(list->query()->items()->entityAtIndex(i)->persistentID());
    EXPECT_FALSE(list->hasRowsToDisplay());
    EXPECT_EQ(list->tableViewNumberOfRowsInSection(*list->tableView(), 9), 0U);
    EXPECT_EQ(list->tableViewTitleForHeaderInSection(*list->tableView(), 9), std::nullopt);
    list->refreshRows();
    advance(0);
    EXPECT_EQ(list->rowAtIndexPath({0, 0}), NotFound);
    EXPECT_TRUE(saysItIsEmpty());
    list->actions = 1;
    EXPECT_TRUE(list->hasRowsToDisplay()) << "action rows count";
    list->refreshRows();
    EXPECT_FALSE(saysItIsEmpty());
}

}  // namespace
}  // namespace zornic
