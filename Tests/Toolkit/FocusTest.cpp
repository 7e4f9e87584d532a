#include <set>

#include "ControllerFixture.h"
#include "ListController.h"
#include "Platform/Toolkit/AlertController.h"
#include "Platform/Toolkit/Button.h"
#include "Platform/Toolkit/TabBarController.h"

using namespace zornic;

namespace {

class FocusTest : public ControllerTest {
protected:
    void SetUp() override {
        screen->setIntegerCapability(ScreenCapability::InteractionModels, InteractionModel::Knob);
    }
    std::shared_ptr<Button> button(const std::string& title, const Rect& frame,
                                   const std::shared_ptr<View>& parent) {
        auto made = make<Button>();
        made->setTitle(title, ControlState::Normal);
        made->setFrame(frame);
        parent->addSubview(made);
        return made;
    }
    /** A list of numbered rows that lets the focus out to buttons from `leaves` only. */
    std::shared_ptr<ListController> numbers() {
        const auto list = make<ListController>();
        list->rows = {20};
        list->mayLeave = [this](const auto& next, const IndexPath& from) {
            return !dynamic_cast<Button*>(next.get()) || leaves.count(from.row());
        };
        return list;
    }
    /** What is focused, a row by its number. */
    std::string focused() {
        window->takeDamage();
        const auto item = window->focusSystem().focusedItem();
        EXPECT_EQ(focusedIn(*window), item ? 1 : 0);
        const auto text = item ? item->accessibilityText() : "none";
        return text.substr(text.find('.') + 1);
    }
    std::string turned(int detents) {
        window->turnKnob(detents);
        return focused();
    }
    static int focusedIn(const View& view) {
        int sum = view.isFocused();
        for (const auto& subview : view.subviews()) sum += focusedIn(*subview);
        return sum;
    }

    std::set<std::uint64_t> leaves{0, 19};
};

}  // namespace

TEST_F(FocusTest, GoesInReadingOrderAndStopsAtTheEnds) {
    const auto root = make<ViewController>();
    const auto& view = root->view();
    button("3", {10, 100, 60, 60}, view);
    button("2", {200, 20, 60, 44}, view);
    const auto one = button("1", {10, 4, 60, 60}, view);
    button("hidden", {80, 4, 60, 60}, view)->setHidden(true);
    button("faded", {80, 4, 60, 60}, view)->setAlpha(0);
    const auto off = button("off", {80, 4, 60, 60}, view);
    off->setEnabled(false);
    button("empty", {80, 4, 0, 0}, view);
    button("outside", {900, 4, 60, 60}, view);
    show(root);
    EXPECT_EQ(focused(), "1");
    EXPECT_EQ(turned(-1), "1");
    EXPECT_EQ(turned(1), "2");
    EXPECT_EQ(turned(100), "3");
    EXPECT_EQ(turned(-1), "2");

    int pressed = 0;
    one->addTarget(
        window, [&](const auto&) { ++pressed; }, ControlEvent::TouchUpInside);
    turned(-1);
    window->pressKnob(true);
    window->pressKnob(false);
    EXPECT_EQ(pressed, 1);
    window->pressKnob(true);
    turned(1);  // turning away takes the press back
    window->pressKnob(false);
    EXPECT_EQ(pressed, 1);

    one->setHidden(true);
    window->focusSystem().focus(one);
    EXPECT_EQ(focused(), "2");
    screen->setIntegerCapability(ScreenCapability::InteractionModels, InteractionModel::Touch);
    window->screenDidChange();
    EXPECT_EQ(focused(), "none");
}

TEST_F(FocusTest, AListIsOneStopWhoseEndsLetGo) {
    const auto list = numbers();
    const auto stack = make<NavigationController>(make<ViewController>());
    list->setTitle("list");
    const auto right = button("right", {0, 0, 100, 30}, make<View>());
    list->navigationItem()->setRightBarButtonItem(make<BarButtonItem>(right));
    stack->pushViewController(list, false);
    show(stack);
    EXPECT_EQ(focused(), "0");
    EXPECT_EQ(turned(-1), "right");
    EXPECT_EQ(turned(1), "0");
    EXPECT_EQ(turned(5), "5");
    leaves = {};
    EXPECT_EQ(turned(-20), "0");  // no way out
    EXPECT_EQ(turned(40), "19");
    list->rows = {3};
    list->tableView()->reloadData();
    EXPECT_EQ(focused(), "2");
    list->rows = {0};
    list->tableView()->reloadData();
    EXPECT_NE(focused(), "none");
    EXPECT_FALSE(window->focusSystem().focusedItem()->isDescendantOf(*list->view()));
}

TEST_F(FocusTest, IsOnViewAgainAfterAFingerScrolledItAway) {
    const auto list = numbers();
    list->rows = {1000};
    show(list);
    EXPECT_EQ(turned(2), "2");
    window->touchDown({100, 300});
    for (double y = 300; y > 60; y -= 20) {
        frame(std::chrono::milliseconds(17));
        window->touchMove({100, y});
    }
    window->touchUp({100, 60});
    EXPECT_EQ(focused(), "2") << "stays while the list moves";
    for (int i = 0; i < 300; ++i) frame(std::chrono::milliseconds(17));
    focused();
    const auto row = window->focusSystem().focusedItem();
    ASSERT_TRUE(row);
    EXPECT_TRUE(row->convertToWindow(row->bounds()).intersects(window->bounds()));
    const auto title = std::stoi(focused());
    EXPECT_GT(title, 2);
    EXPECT_EQ(turned(1), std::to_string(title + 1));
}

TEST_F(FocusTest, ReturnsWhereAScreenHadItWhenTheScreenComesBack) {
    const auto list = numbers(), deeper = numbers();
    const auto stack = make<NavigationController>(list);
    show(stack);
    EXPECT_EQ(turned(4), "4");
    stack->pushViewController(deeper, true);
    EXPECT_EQ(focused(), "0");
    settle();
    EXPECT_EQ(turned(2), "2");

    const auto sheet = make<ViewController>();
    button("close", {10, 10, 80, 80}, sheet->view());
    list->presentViewController(sheet, false);
    EXPECT_EQ(focused(), "close");
    sheet->dismissViewController(true);
    settle();
    EXPECT_EQ(focused(), "2");

    window->focusSystem().focus(stack->navigationBar()->backButton());
    window->pressKnob(true);
    window->pressKnob(false);
    settle();
    EXPECT_EQ(focused(), "4");
}

TEST_F(FocusTest, ReturnsAtOnceFromAnAlertThatFadesAway) {
    const auto root = make<ViewController>();
    const auto under = button("under", {10, 10, 60, 60}, root->view());
    show(root);
    const auto alert = make<AlertController>("Title", "Message", AlertControllerStyle::Alert);
    alert->addAction(make<AlertAction>("OK", AlertActionStyle::Cancel, nullptr));
    root->presentViewController(alert, true);
    settle();
    EXPECT_EQ(focused(), "OK");
    EXPECT_TRUE(window->pressBack());
    EXPECT_EQ(window->focusSystem().focusedItem(), under);
    EXPECT_EQ(focusedIn(*window), 1);
    settle();
    EXPECT_EQ(focused(), "under");
}

TEST_F(FocusTest, BackGoesFromTheContentToItsTab) {
    const auto tabs = make<TabBarController>();
    const auto one = numbers(), two = numbers();
    one->setTitle("one");
    two->setTitle("two");
    tabs->setViewControllers({one, two});
    const auto stack = make<NavigationController>(tabs);
    stack->setNavigationBarHidden(true, false);
    show(stack);
    tabs->setSelectedViewController(two);
    EXPECT_EQ(focused(), "0");
    EXPECT_TRUE(window->pressBack());
    EXPECT_EQ(focused(), "two");
    EXPECT_FALSE(window->pressBack());
    EXPECT_EQ(turned(-1), "one");
    window->pressKnob(true);
    window->pressKnob(false);
    EXPECT_EQ(tabs->selectedViewController(), one);
}
