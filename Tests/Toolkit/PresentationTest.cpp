#include "ControllerFixture.h"
#include "Platform/Toolkit/AlertController.h"

using namespace zornic;
using namespace std::chrono_literals;

namespace {

class PresentationTest : public ControllerTest {
protected:
    Task note(const char* what) {
        return [this, what] { log.emplace_back(what); };
    }
    std::shared_ptr<RecordingController> root = screenNamed("root"), sheet = screenNamed("sheet");
};

}  // namespace

TEST_F(PresentationTest, AFullScreenCoversItsPresenterUntilItGoes) {
    const auto inner = screenNamed("inner");
    const auto stack = make<NavigationController>(inner);
    root->addChildViewController(stack);
    show(root);
    root->presentViewController(sheet, true, note("up"));
    EXPECT_EQ(events(), "root.will- inner.will- sheet.will+");
    EXPECT_EQ(sheet->view()->layer()->presentationOffset().y, 480);
    root->presentViewController(screenNamed("second"), true, note("never"));
    settle();
    EXPECT_EQ(events(), "root.did- inner.did- sheet.did+ up");
    EXPECT_EQ(window->topPresentedViewController(), sheet);
    EXPECT_EQ(sheet->presentingViewController(), root);
    EXPECT_EQ(sheet->lastPresentationTransition(), PresentationTransition::Rise);

    sheet->dismissViewController(true, note("down"));  // goes to its presenter
    EXPECT_EQ(events(), "sheet.will- root.will+ inner.will+");
    EXPECT_EQ(window->topPresentedViewController(), root);
    const std::weak_ptr<ViewController> gone = sheet;
    sheet = nullptr;
    settle();
    EXPECT_EQ(events(), "sheet.did- root.did+ inner.did+ down");
    EXPECT_TRUE(gone.expired());
    root->dismissViewController(true, note("nothing there"));
    EXPECT_EQ(events(), "nothing there");
}

TEST_F(PresentationTest, DismissalTakesWhatLiesAboveAndInterruptsARise) {
    show(root);
    const auto stack = make<NavigationController>(sheet),
               upper = make<NavigationController>(screenNamed("upper"));
    root->presentViewController(stack, false);
    EXPECT_EQ(sheet->presentingViewController(), root);
    sheet->presentViewController(upper, false);
    EXPECT_EQ(upper->presentingViewController(), stack) << "a full screen covers the containers too";
    EXPECT_EQ(sheet->presentedViewController(), upper);
    const auto refused = screenNamed("refused");
    stack->presentViewController(refused, false);
    EXPECT_FALSE(refused->presentingViewController());
    events();
    root->dismissViewController(false);
    EXPECT_EQ(events(), "upper.will- upper.did- root.will+ root.did+");
    EXPECT_FALSE(sheet->presentedViewController() || upper->view()->window() || stack->view()->window());

    root->presentViewController(upper, true, note("up"));
    frame(100ms);
    events();
    root->dismissViewController(true, note("down"));
    EXPECT_EQ(events(), "root.did- upper.did+ up upper.will- root.will+");
    EXPECT_GT(upper->view()->layer()->presentationOffset().y, 0);  // goes on from where it was
    root->presentViewController(stack, true);                      // ends the fall at once
    EXPECT_EQ(events(), "upper.did- root.did+ down root.will- sheet.will+");
    settle();
    EXPECT_EQ(window->topPresentedViewController(), stack);
    window->setRootViewController(nullptr);
    EXPECT_FALSE(stack->view()->window());
    EXPECT_EQ(window->takeDamage().size(), 1u);
}

TEST_F(PresentationTest, WorksWithoutAWindowAndOutlivesItsPresenter) {
    root->presentViewController(sheet, true, note("up"));
    EXPECT_EQ(events(), "sheet.will+ sheet.did+ up");
    root = nullptr;
    EXPECT_EQ(events(), "sheet.will- sheet.did-");
    EXPECT_FALSE(sheet->presentingViewController());
}

TEST_F(PresentationTest, AnAlertLeavesItsPresenterOnViewAndRunsTheHandlerOnceItIsGone) {
    show(root);
    int touched = 0;
    const auto below = make<Button>();
    below->setFrame({0, 0, 800, 480});
    below->addTarget(
        window, [&](const auto&) { ++touched; }, ControlEvent::TouchUpInside);
    root->view()->addSubview(below);
    window->touchDown({400, 240});

    const auto alert = make<AlertController>("Title", "Message", AlertControllerStyle::Alert);
    for (const char* title : {"One", "Two"})
        alert->addAction(make<AlertAction>(title, AlertActionStyle::Default, note(title)));
    root->presentViewController(alert, true);
    settle();
    window->touchUp({400, 240});  // was for what is covered now
    window->touchDown({4, 4});
    window->touchUp({4, 4});
    EXPECT_EQ(touched, 0);
    EXPECT_TRUE(window->pressBack());  // no way out without an answer
    EXPECT_EQ(events(), "");
    const auto& two = alert->view()->subviews().front()->subviews().back();
    const Point middle = two->convertToWindow(two->bounds().center());
    window->touchDown(middle);
    window->touchUp(middle);
    alert->choose(alert->actions().front());  // too late
    EXPECT_EQ(events(), "");
    settle();
    EXPECT_EQ(events(), "Two");
    EXPECT_FALSE(root->presentedViewController());

    alert->addAction(make<AlertAction>("Cancel", AlertActionStyle::Cancel, note("Cancel")));
    root->presentViewController(alert, false);
    EXPECT_TRUE(window->pressBack());
    settle();
    EXPECT_EQ(events(), "Cancel");
    window->touchDown({4, 4});
    window->touchUp({4, 4});
    EXPECT_EQ(touched, 1);
}

TEST_F(PresentationTest, AnAlertFitsTheSmallestScreen) {
    screen->setSize({400, 240}, 1);
    show(root);
    for (const auto style : {AlertControllerStyle::Alert, AlertControllerStyle::ActionSheet}) {
        const auto alert = make<AlertController>("Title", std::string(600, 'm'), style);
        for (int i = 0; i < 5; ++i)
            alert->addAction(make<AlertAction>("Choice", AlertActionStyle::Default, nullptr));
        alert->addAction(make<AlertAction>("Cancel", AlertActionStyle::Cancel, nullptr));
        root->presentViewController(alert, false);
        window->takeDamage();
        const auto panel = alert->view()->subviews().front();
        EXPECT_TRUE(alert->view()->bounds().contains(panel->frame()));
        for (const auto& part : panel->subviews()) {
            EXPECT_TRUE(panel->bounds().contains(part->frame()));
            for (const auto& other : panel->subviews())
                EXPECT_TRUE(part == other || !part->frame().intersects(other->frame()));
            EXPECT_TRUE(!dynamic_cast<Button*>(part.get()) || part->frame().height() >= 44);
        }
        alert->dismissViewController(false);
    }
}
