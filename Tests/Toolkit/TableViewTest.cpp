#include "ControllerFixture.h"
#include "ListController.h"
#include "Platform/Toolkit/Button.h"
#include "Tests/Support/RecordingCanvas.h"

using namespace zornic;
using namespace std::chrono_literals;

namespace {

/** A window of 800 x 436: nine rows and nine tenths. */
class TableViewTest : public ControllerTest {
protected:
    void show(bool knob = false) {
        screen->setSize({800, 436}, 1);
        if (knob) screen->setIntegerCapability(ScreenCapability::InteractionModels, InteractionModel::Knob);
        ControllerTest::show(list);
        frames(0.1s);
    }

    void drag(double fromY, double toY, int steps = 4) {
        window->touchDown({100, fromY});
        for (int step = 1; step <= steps; ++step) {
            frames(Seconds(1.0 / 60));
            window->touchMove({100, fromY + (toY - fromY) * step / steps});
        }
        window->touchUp({100, toY});
    }

    void tap(Point point) {
        window->touchDown(point);
        frames(Seconds(1.0 / 60));
        window->touchUp(point);
    }

    /** Every row on view shows its own text at its own place, with none missing. */
    void expectRowsInPlace() {
        const auto paths = table()->indexPathsForVisibleRows();
        double bottom = table()->bounds().y();
        for (const auto& path : paths) {
            const auto cell = table()->cellForRowAtIndexPath(path);
            ASSERT_TRUE(cell);
            EXPECT_EQ(cell->textLabel()->text(),
                      std::to_string(path.section()) + "." + std::to_string(path.row()));
            EXPECT_LE(cell->frame().y(), bottom);
            bottom = cell->frame().maxY();
        }
        EXPECT_GE(bottom, std::min(table()->bounds().maxY(), table()->contentSize().height));
    }

    std::string focused() {
        const auto cell = std::dynamic_pointer_cast<TableViewCell>(window->focusSystem().focusedItem());
        return cell ? cell->textLabel()->text() : "";
    }

    const std::shared_ptr<TableView>& table() { return list->tableView(); }
    double offset() { return table()->contentOffset().y; }

    std::shared_ptr<ListController> list = make<ListController>();
};

}  // namespace

TEST_F(TableViewTest, AListOfAnyLengthMakesCellsForTheScreenOnly) {
    const auto before = TableView::cellsMade();
    list->rows = std::vector<std::uint64_t>(27, 100'000);
    show();
    const auto counted = list->counted;
    for (int fling = 0; fling < 6; ++fling) {
        drag(400, 60, 3);
        frames(0.4s);
        expectRowsInPlace();
    }
    EXPECT_GT(offset(), 1500);
    table()->scrollToRowAtIndexPath({26, 99'999}, false, false);
    frames(0.1s);
    expectRowsInPlace();
    EXPECT_EQ(table()->indexPathsForVisibleRows().back(), IndexPath({26, 99'999}));
    drag(100, 400, 3);
    frames(3s);
    expectRowsInPlace();
    const auto fits = static_cast<std::uint64_t>(std::ceil(436.0 / 44)) + 1;
    EXPECT_LE(TableView::cellsMade() - before, fits + 4);
    EXPECT_EQ(list->counted, counted);
    EXPECT_LT(list->asked.size(), 1000U);
}

TEST_F(TableViewTest, ATapChoosesAndADragOrAStoppingTouchDoesNot) {
    show();
    const auto cell = table()->cellForRowAtIndexPath({0, 2});
    window->touchDown({100, 110});
    EXPECT_TRUE(cell->isHighlighted());  // at once
    window->touchUp({100, 110});
    EXPECT_EQ(list->chosen, std::vector{IndexPath({0, 2})});
    EXPECT_TRUE(cell->isSelected());
    tap({100, 150});
    EXPECT_EQ(table()->indexPathsForSelectedRows(), std::vector{IndexPath({0, 3})});
    EXPECT_FALSE(cell->isSelected());

    list->chosen.clear();
    window->touchDown({100, 110});
    window->touchMove({400, 112});
    window->touchUp({400, 300});  // let go on another row
    EXPECT_FALSE(cell->isHighlighted());
    window->touchDown({100, 110});
    window->touchMove({100, 80});
    EXPECT_FALSE(cell->isHighlighted());  // a press that becomes a scroll
    window->touchCancel();

    drag(400, 100);
    frames(0.1s);
    ASSERT_TRUE(table()->isDecelerating());
    tap({100, 200});
    EXPECT_TRUE(list->chosen.empty());
    frames(1s);
    tap({100, 200});
    EXPECT_EQ(list->chosen.size(), 1U);
    EXPECT_EQ(std::fmod(offset(), 44), 0);
}

TEST_F(TableViewTest, ChoosingARowMayTakeTheListAway) {
    show();
    list->onSelect = [this](const IndexPath&) {
        list->tableView()->removeFromSuperview();
        window->setRootViewController(nullptr);
        list.reset();
    };
    tap({100, 110});
    EXPECT_FALSE(list);
}

TEST_F(TableViewTest, ReloadKeepsThePlaceAndDropsTheSelection) {
    show();
    table()->scrollToRowAtIndexPath({0, 50}, true, false);
    tap({100, 110});
    table()->reloadData();
    EXPECT_EQ(offset(), 50 * 44);
    EXPECT_TRUE(table()->indexPathsForSelectedRows().empty());
    expectRowsInPlace();
    for (const auto& cell : table()->visibleCells()) EXPECT_FALSE(cell->isSelected());

    list->rows = {20};
    table()->reloadData();
    EXPECT_EQ(offset(), 20 * 44 - 436);
    expectRowsInPlace();
    list->rows = {};
    table()->reloadData();
    EXPECT_EQ(offset(), 0);
    EXPECT_TRUE(table()->visibleCells().empty());
    EXPECT_TRUE(table()->rectForRowAtIndexPath({0, 3}).empty());
    table()->scrollToRowAtIndexPath({4, 4}, true, true);
    table()->rowWasActivated({0, 0});
    EXPECT_EQ(list->chosen.size(), 1U);

    list->rows = {30};
    list->cellsAreMissing = true;
    table()->reloadData();
    drag(400, 100);
    frames(2s);
    EXPECT_TRUE(table()->visibleCells().empty());
}

TEST_F(TableViewTest, RowsOfABatchAreAskedForOnceAndOnlyWhenOnView) {
    show();
    table()->selectRowAtIndexPath({0, 1}, false);
    list->asked.clear();
    table()->beginUpdates();
    table()->reloadRowsAtIndexPaths({{0, 1}, {0, 60}});
    table()->beginUpdates();
    table()->reloadRowsAtIndexPaths({{0, 1}, {0, 4}, {7, 7}});
    table()->endUpdates();
    EXPECT_TRUE(list->asked.empty());
    table()->endUpdates();
    EXPECT_EQ(list->asked, (std::vector<IndexPath>{{0, 1}, {0, 4}}));
    EXPECT_TRUE(table()->cellForRowAtIndexPath({0, 1})->isSelected());
    expectRowsInPlace();
}

TEST_F(TableViewTest, AFingerOnTheIndexBarGoesFromLetterToLetter) {
    for (char letter = 'A'; letter <= 'Z'; ++letter) list->index.emplace_back(1, letter);
    list->rows = std::vector<std::uint64_t>(26, 40);
    list->rows[25] = 3;
    list->headers = {"A", "B"};
    show();
    const auto height = 40 * 44.0;
    EXPECT_EQ(table()->cellForRowAtIndexPath({0, 0})->frame().maxX(), 800 - 28);
    window->touchDown({760, 2});  // beside the letters, within 44 points
    EXPECT_EQ(offset(), 0);
    std::vector<double> offsets;
    for (double y = 2; y < 434; y += 4) {
        window->touchMove({790, y});
        if (offsets.empty() || offsets.back() != offset()) offsets.push_back(offset());
    }
    window->touchUp({790, 433});
    EXPECT_EQ(offsets.size(), 26U);
    EXPECT_EQ(offsets[1], 28 + height);  // the header of B
    EXPECT_EQ(offsets[13], 56 + 13 * height);
    EXPECT_EQ(offset(), table()->maximumOffset());
    EXPECT_TRUE(list->chosen.empty());
    frames(0.1s);
    expectRowsInPlace();

    list->index.clear();
    table()->reloadData();
    EXPECT_TRUE(table()->indexBar()->isHidden());
    EXPECT_EQ(table()->visibleCells().front()->frame().maxX(), 800);
}

TEST_F(TableViewTest, LettersOfTheIndexNeverTouch) {
    for (const double height : {196.0, 436.0, 676.0})
        for (const std::size_t count : {1U, 5U, 20U, 60U}) {
            const auto bar = make<IndexBar>(Rect(0, 0, IndexBar::width, height));
            std::vector<std::string> titles;
            for (std::size_t at = 0; at < count; ++at) titles.push_back("L" + std::to_string(at));
            bar->setTitles(titles);
            RecordingCanvas canvas({0, 0, IndexBar::width, height});
            bar->drawRect(canvas, bar->bounds());
            double bottom = 0;
            for (const auto& letter : canvas.texts) {
                EXPECT_GE(letter.area.y(), bottom) << letter.text << " of " << count << " in " << height;
                bottom = letter.area.maxY();
            }
            EXPECT_LE(bottom, height);
            EXPECT_EQ(canvas.texts.front().text, titles.front());
            EXPECT_EQ(canvas.texts.back().text, titles.back());
            EXPECT_EQ(canvas.fills.empty(), canvas.texts.size() == count) << "dots for what is left out";
            EXPECT_GT(2 * canvas.texts.size() + 1, std::min(count, static_cast<std::size_t>(height / 15)));
        }
}

TEST_F(TableViewTest, TheKnobSeesOneRowBeyondAndKeepsItsRowOverAReload) {
    list->rows = {5, 0, 30};
    show(true);
    EXPECT_EQ(focused(), "0.0");
    window->turnKnob(5);
    EXPECT_EQ(focused(), "2.0");
    window->turnKnob(6);
    EXPECT_EQ(focused(), "2.6");
    EXPECT_GE(table()->bounds().maxY(), table()->rectForRowAtIndexPath({2, 7}).maxY());
    list->mayLeave = [](const auto&, const IndexPath& from) { return from != IndexPath{2, 8}; };
    window->turnKnob(9);  // a fast spin does not jump what may not be left
    EXPECT_EQ(focused(), "2.8");
    list->mayLeave = nullptr;

    table()->reloadData();
    frames(0.1s);
    EXPECT_EQ(focused(), "2.8");
    expectRowsInPlace();
    table()->reloadRowsAtIndexPaths({{2, 8}});
    EXPECT_EQ(focused(), "2.8");
    list->rows = {5, 0, 4};
    table()->reloadData();
    frames(0.1s);
    EXPECT_EQ(focused(), "2.3");
    int marked = 0;
    for (const auto& cell : table()->visibleCells()) marked += cell->isFocused();
    EXPECT_EQ(marked, 1);

    window->pressKnob(true);
    EXPECT_TRUE(table()->cellForRowAtIndexPath({2, 3})->isHighlighted());
    window->pressKnob(false);
    EXPECT_EQ(list->chosen, std::vector{IndexPath({2, 3})});
    window->turnKnob(-20);
    EXPECT_EQ(focused(), "0.0");
    EXPECT_EQ(offset(), 0);
}

TEST_F(TableViewTest, TheSelectionGoesWhenTheScreenComesBack) {
    show();
    table()->selectRowAtIndexPath({0, 4}, false);
    list->viewWillAppear(false);
    EXPECT_TRUE(table()->indexPathsForSelectedRows().empty());
    table()->selectRowAtIndexPath({0, 4}, false);
    const auto swipe = make<TransitionCoordinator>(true);
    list->setTransitionCoordinator(swipe);
    list->viewWillAppear(true);
    EXPECT_EQ(table()->indexPathsForSelectedRows().size(), 1U);
}

TEST_F(TableViewTest, TextsStandOnSharedBaselinesInTheirColumn) {
    show();
    const auto cell = table()->cellForRowAtIndexPath({0, 0});
    const auto baseline = [&](Label& label) { return label.frame().y() + label.firstBaselineFromTop(); };
    EXPECT_NEAR(cell->textLabel()->frame().midY(), 22, 0.5);
    EXPECT_EQ(cell->textLabel()->frame().x(), 12);
    cell->detailTextLabel()->setText("detail");
    cell->setSeparatorInset({0, 57, 0, 0});
    cell->setAccessoryView(make<View>(Rect(0, 0, 20, 20)));
    frames(0.1s);
    EXPECT_NEAR(baseline(*cell->textLabel()), 19, 0.5);
    EXPECT_NEAR(baseline(*cell->detailTextLabel()), 36, 0.5);
    EXPECT_EQ(cell->textLabel()->frame().x(), 57);
    EXPECT_EQ(cell->accessoryView()->frame(), Rect(768, 12, 20, 20));
    EXPECT_LE(cell->textLabel()->frame().maxX(), 768 - 8);

    cell->setPlayingMark(true, true);  // in the accessory's place
    frames(0.1s);
    EXPECT_TRUE(cell->accessoryView()->isHidden());
    EXPECT_TRUE(loop.nextDue());
    table()->removeFromSuperview();
    EXPECT_FALSE(loop.nextDue());  // nothing moves off screen
}
