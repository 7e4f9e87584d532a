#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/ActivityIndicatorView.h"
#include "Platform/Toolkit/Animation.h"
#include "Platform/Toolkit/DamageRegion.h"
#include "Platform/Toolkit/Window.h"

using namespace zornic;
using namespace std::chrono_literals;

namespace {

struct AnimationTest : testing::Test {
    void frame(Duration by) {
        clock.advance(by);
        loop.runDue();
        loop.fireFrame();
    }
    ManualClock clock;
    RunLoop loop{clock};
    std::vector<double> steps;
    std::string ends;
};

}  // namespace

TEST_F(AnimationTest, EndsExactlyAndOnce) {
    auto token = animate(
        300ms, easeOut, [&](double p) { steps.push_back(p); }, [&](bool f) { ends += f ? "y" : "n"; });
    frame(0ms);
    EXPECT_TRUE(steps.empty());
    for (int i = 0; i < 7; ++i) frame(50ms);
    ASSERT_EQ(steps.size(), 6u);
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
    EXPECT_GT(steps[2], 0.5);
    EXPECT_EQ(steps.back(), 1);
    EXPECT_FALSE(loop.wantsFrames());
    token.reset();
    EXPECT_EQ(ends, "y");
}

TEST_F(AnimationTest, CanBeCaughtInTheMiddle) {
    Token token = animate(
        300ms, linear, [&](double p) { steps.push_back(p); }, [&](bool f) { ends += f ? "y" : "n"; });
    frame(150ms);
    token.reset();
    frame(150ms);
    EXPECT_EQ(steps, std::vector{0.5});
    EXPECT_EQ(ends, "n");
    // By its own last step, and by its own end.
    token = animate(
        10ms, linear, [&](double) { token.reset(); }, [&](bool f) { ends += f ? "y" : "n"; });
    frame(20ms);
    token = animate(
        0ms, linear, [](double) {},
        [&](bool f) {
            ends += f ? "y" : "n";
            token.reset();
        });
    frame(1ms);
    frame(1ms);
    EXPECT_EQ(ends, "nny");
}

TEST_F(AnimationTest, IndicatorTurnsOnlyWhileItIsSeen) {
    const auto window = make<Window>(Rect{0, 0, 800, 480});
    window->setWindowHidden(false);
    const auto indicator = make<ActivityIndicatorView>();
    indicator->setFrame({100, 100, 20, 20});
    indicator->startAnimating();
    EXPECT_EQ(loop.nextDue(), std::nullopt);
    window->addSubview(indicator);
    window->takeDamage();
    int redraws = 0;
    for (int i = 0; i < 100; ++i) {
        frame(10ms);
        const auto damage = window->takeDamage();
        if (damage.empty()) continue;
        EXPECT_EQ(damage, std::vector{Rect(100, 100, 20, 20)});
        ++redraws;
    }
    EXPECT_EQ(redraws, 10);
    indicator->removeFromSuperview();
    EXPECT_EQ(loop.nextDue(), std::nullopt);
}

TEST(DamageRegion, JoinsWhatIsNearAndStaysSmall) {
    DamageRegion region({0, 0, 800, 480});
    region.add({0, 0, 100, 50});
    region.add({10, 10, 20, 20});
    region.add({0, 50, 100, 50});
    EXPECT_EQ(region.rects(), std::vector{Rect(0, 0, 100, 100)});
    region.add({700, 400, 200, 200});
    EXPECT_EQ(region.rects().size(), 2u);
    EXPECT_EQ(region.rects()[1], Rect(700, 400, 100, 80));
    region.add({900, 0, 10, 10});
    EXPECT_EQ(region.take().size(), 2u);
    EXPECT_TRUE(region.empty());

    // Two strips far apart, joined by what fills the gap.
    region.add({0, 0, 800, 20});
    region.add({0, 300, 800, 20});
    EXPECT_EQ(region.rects().size(), 2u);
    region.add({0, 20, 800, 280});
    EXPECT_EQ(region.take(), std::vector{Rect(0, 0, 800, 320)});

    for (int i = 0; i <= 16; ++i) region.add({i % 5 * 160.0, i / 5 * 120.0, 20, 20});
    EXPECT_EQ(region.take(), std::vector{Rect(0, 0, 800, 480)});
}
