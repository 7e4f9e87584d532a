#include "Platform/Toolkit/Button.h"
#include "Tests/Support/ScreenFixture.h"
#include "View Controllers/ZRNNowPlayingNavigationController.h"
#include "View Controllers/ZRNNowPlayingNavigationItem.h"

using namespace zornic;

namespace {

struct NowPlayingNavigationTest : testing::Test, ScreenFixture {};

TEST_F(NowPlayingNavigationTest, GoingBackClosesThePresentationAndNeverShowsTheEmptyScreen) {
    const std::function<void(ZRNNowPlayingNavigationController&)> ways[] = {
        [this](auto& stack) { tap(*stack.navigationBar()->backButton()); },
        [this](auto&) { window->pressBack(); },
        [this](auto&) {  // a swipe from the edge
            window->touchDown({2, 200});
            window->touchMove({60, 200});
            window->touchMove({400, 200});
            window->touchUp({400, 200});
        }};
    const auto root = make<ViewController>();
    show(root);
    for (const auto& goBack : ways) {
        const auto nowPlaying = make<ViewController>();
        const auto stack = make<ZRNNowPlayingNavigationController>(nowPlaying);
        EXPECT_EQ(stack->viewControllers().front(), stack->previousViewController());
        root->presentViewControllerWithTransition(stack, PresentationTransition::Rise);
        advance(1);
        ASSERT_TRUE(nowPlaying->hasAppeared());
        ASSERT_FALSE(stack->navigationBar()->backButton()->isHidden());
        goBack(*stack);
        EXPECT_EQ(stack->topViewController(), nowPlaying);
        EXPECT_EQ(stack->lastPresentationTransition(), PresentationTransition::Fall);
        advance(1);
        EXPECT_EQ(root->presentedViewController(), nullptr);
        EXPECT_TRUE(root->hasAppeared());
        EXPECT_FALSE(stack->previousViewController()->isViewLoaded());
    }
}

TEST_F(NowPlayingNavigationTest, TheKitsBarItemIsThereWhileSomethingPlaysAndLeadsThere) {
    const auto list = make<ViewController>();
    show(list);
    ZRN_setShowsNowPlayingNavigationItem(list, true);
    EXPECT_FALSE(list->navigationItem()->rightBarButtonItem());
    play(addSongs({"A"}));
    const auto item = list->navigationItem()->rightBarButtonItem();
    ASSERT_TRUE(item);
    const auto button = std::dynamic_pointer_cast<Button>(item->customView());
    ASSERT_TRUE(button);
    EXPECT_EQ(button->titleForState(ControlState::Normal), "Now Playing");
    button->sendActions(ControlEvent::TouchUpInside);
    advance(1);
    EXPECT_TRUE(
        std::dynamic_pointer_cast<ZRNNowPlayingNavigationController>(list->presentedViewController()));
    ZRN_setShowsNowPlayingNavigationItem(list, false);
    EXPECT_FALSE(list->navigationItem()->rightBarButtonItem());
}

TEST_F(NowPlayingNavigationTest, NobodyPresentsItSoNothingIsDismissed) {
    const auto nowPlaying = make<ViewController>();
    const auto stack = make<ZRNNowPlayingNavigationController>(nowPlaying);
    show(stack);
    tap(*stack->navigationBar()->backButton());
    advance(1);
    EXPECT_EQ(stack->topViewController(), nowPlaying);
    EXPECT_TRUE(nowPlaying->hasAppeared());
}

}  // namespace
