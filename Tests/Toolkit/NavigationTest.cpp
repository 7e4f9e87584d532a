#include "ControllerFixture.h"

using namespace zornic;
using namespace std::chrono_literals;

namespace {

/** Refuses to pop, as a stack does whose back item closes something else. */
class RefusingNavigation : public NavigationController {
public:
    using NavigationController::NavigationController;
    bool navigationBarShouldPopItem(NavigationBar&, const std::shared_ptr<NavigationItem>&) override {
        ++asked;
        return false;
    }
    int asked = 0;
};

class NavigationTest : public ControllerTest {
protected:
    void drag(std::initializer_list<double> xs, Duration each = 50ms) {
        for (auto at = xs.begin(); at != xs.end(); ++at) {
            at == xs.begin() ? window->touchDown({*at, 200}) : window->touchMove({*at, 200});
            frame(each);
        }
    }
    double offsetOf(const std::shared_ptr<ViewController>& controller) {
        return controller->view()->layer()->presentationOffset().x;
    }

    std::shared_ptr<RecordingController> a = screenNamed("a"), b = screenNamed("b"), c = screenNamed("c");
    std::shared_ptr<NavigationController> stack = make<NavigationController>(a);
};

}  // namespace

TEST_F(NavigationTest, ScreensHearOfPushAndPopInOrder) {
    EXPECT_FALSE(stack->isViewLoaded() || a->isViewLoaded());
    show(stack);
    stack->pushViewController(b, true);
    EXPECT_EQ(events(), "a.will- b.will+");
    ASSERT_TRUE(b->transitionCoordinator() && a->transitionCoordinator());
    EXPECT_FALSE(b->transitionCoordinator()->initiallyInteractive());
    settle();
    EXPECT_EQ(events(), "a.did- b.did+");
    EXPECT_FALSE(b->transitionCoordinator());

    stack->pushViewController(c, false);
    EXPECT_EQ(events(), "b.will- c.will+ b.did- c.did+");
    stack->pushViewController(b, true);  // already there
    stack->pushViewController(nullptr, true);
    EXPECT_EQ(stack->viewControllers().size(), 3u);
    stack->popToViewController(a, true);
    EXPECT_EQ(events(), "c.will- a.will+");
    settle();
    EXPECT_EQ(events(), "c.did- a.did+");
    EXPECT_FALSE(stack->popViewControllerAnimated(true));
    EXPECT_TRUE(!b->parentViewController() && !c->parentViewController() && !c->view()->superview());
    EXPECT_EQ(events(), "");
}

TEST_F(NavigationTest, AChangeDuringAMotionEndsTheMotionFirst) {
    show(stack);
    stack->pushViewController(b, true);
    frame(100ms);
    EXPECT_GT(offsetOf(b), 0);
    EXPECT_LT(offsetOf(a), 0);
    stack->pushViewController(c, true);
    EXPECT_EQ(events(), "a.will- b.will+ a.did- b.did+ b.will- c.will+");
    EXPECT_EQ(offsetOf(b), 0);
    stack->popViewControllerAnimated(true);
    settle();
    EXPECT_EQ(events(), "b.did- c.did+ c.will- b.will+ c.did- b.did+");
    EXPECT_EQ(stack->topViewController(), b);

    stack->pushViewController(c, true);
    window->setWindowHidden(true);  // and so does going out of sight
    EXPECT_EQ(events(), "b.will- c.will+ b.did- c.did+ c.will- c.did-");
    stack->popViewControllerAnimated(true);
    EXPECT_EQ(events(), "");
    EXPECT_TRUE(b->view()->window() && !c->view()->window());
    window->setWindowHidden(false);
    EXPECT_EQ(events(), "b.will+ b.did+");
}

TEST_F(NavigationTest, ASwipeFollowsTheFingerAndIsLetGoOrCompleted) {
    show(stack);
    stack->pushViewController(b, false);
    window->takeDamage();
    log.clear();
    drag({300, 500, 700});
    window->touchUp({700, 200});
    EXPECT_EQ(events(), "");  // not from the edge

    bool cancelled = false;
    a->onWillAppear = [&] {
        if (const auto coordinator = a->transitionCoordinator();
            coordinator && coordinator->initiallyInteractive())
            coordinator->notifyWhenInteractionEnds([&](const auto& context) {
                cancelled = context.cancelled;
                log.push_back("block");
            });
    };
    drag({5, 30, 130, 230});
    EXPECT_EQ(events(), "b.will- a.will+");
    EXPECT_NEAR(offsetOf(b), 200, 30);
    frame(1s);
    window->touchMove({231, 200});
    window->touchUp({231, 200});
    settle();
    EXPECT_EQ(events(), "block a.will- a.did- b.will+ b.did+");
    EXPECT_TRUE(cancelled);
    EXPECT_EQ(stack->topViewController(), b);
    EXPECT_EQ(offsetOf(b), 0);
    EXPECT_TRUE(b->view()->window() && !a->view()->window());

    drag({5, 30, 300, 600}, 200ms);
    window->touchUp({600, 200});
    frame(30ms);
    drag({600, 620, 640});  // caught in the middle
    EXPECT_EQ(events(), "b.will- a.will+");
    window->touchUp({640, 200});
    settle();
    EXPECT_EQ(events(), "block b.did- a.did+");
    EXPECT_FALSE(cancelled);
    EXPECT_EQ(stack->viewControllers().size(), 1u);
    EXPECT_FALSE(b->parentViewController());
}

TEST_F(NavigationTest, BackPopsWhenTheStackLetsIt) {
    show(stack);
    EXPECT_FALSE(window->pressBack());
    stack->pushViewController(b, false);
    window->takeDamage();
    EXPECT_EQ(a->view()->frame().height(), 436);
    EXPECT_FALSE(stack->navigationBar()->backButton()->isHidden());
    stack->navigationBar()->backButton()->sendActions(ControlEvent::TouchUpInside);
    settle();
    EXPECT_EQ(stack->topViewController(), a);
    EXPECT_TRUE(stack->navigationBar()->backButton()->isHidden());

    const auto refusing = make<RefusingNavigation>(screenNamed("fake"));
    refusing->pushViewController(c, false);
    window->setRootViewController(refusing);
    window->takeDamage();
    EXPECT_TRUE(window->pressBack());
    drag({5, 100, 300, 600});
    window->touchUp({600, 200});
    settle();
    EXPECT_EQ(refusing->asked, 2);
    EXPECT_EQ(refusing->topViewController(), c);
}

TEST_F(NavigationTest, TheContentTakesTheRoomOfAHiddenBarAndTheBarMovesWithItsScreen) {
    a->onWillAppear = [&] { stack->setNavigationBarHidden(true, true); };
    b->onWillAppear = [&] { stack->setNavigationBarHidden(false, true); };
    show(stack);
    EXPECT_EQ(a->view()->frame(), (Rect{0, 0, 800, 480}));
    stack->pushViewController(b, true);
    frame(50ms);
    EXPECT_FALSE(stack->navigationBar()->isHidden());
    EXPECT_EQ(stack->navigationBar()->layer()->presentationOffset().x, offsetOf(b));
    settle();
    EXPECT_EQ(b->view()->frame(), (Rect{0, 44, 800, 436}));
    b->setTitle(
        "A title that is far too long for the room that is left between back and the right item of the bar");
    const auto right = make<View>(Rect{0, 0, 120, 24});
    b->navigationItem()->setRightBarButtonItem(make<BarButtonItem>(right));
    window->takeDamage();
    EXPECT_EQ(right->frame(), (Rect{663, 10, 120, 24}));
    for (const auto& part : stack->navigationBar()->subviews()) {
        EXPECT_TRUE(part == right || part->isHidden() || part->frame().maxX() <= right->frame().x());
    }
    stack->popViewControllerAnimated(true);
    frame(50ms);
    EXPECT_EQ(stack->navigationBar()->layer()->presentationOffset().x, offsetOf(b));
    settle();
    EXPECT_TRUE(stack->navigationBar()->isHidden());
}
