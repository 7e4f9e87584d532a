#include "ControllerFixture.h"
#include "Platform/Toolkit/ScrollView.h"

using namespace zornic;
using namespace std::chrono_literals;

namespace {

/** Content of 2000 points behind 400, which comes to rest every 40 points. */
class SteppedScrollView : public ScrollView {
public:
    using ScrollView::ScrollView;

protected:
    double alignedOffset(double offset) const override { return std::round(offset / 40) * 40; }
};

class ScrollViewTest : public ControllerTest {
protected:
    void SetUp() override {
        screen->setSize({800, 400}, 2);
        scroll->setContentSize({800, 2000});
        root->setView(scroll);
        show(root);
    }

    /** Moves a finger that is down in even steps of a frame. */
    void move(double fromY, double toY, int steps) {
        for (int step = 1; step <= steps; ++step) {
            frames(Seconds(1.0 / 60));
            window->touchMove({400, fromY + (toY - fromY) * step / steps});
        }
    }

    double offset() const { return scroll->contentOffset().y; }

    std::shared_ptr<ViewController> root = make<ViewController>();
    std::shared_ptr<SteppedScrollView> scroll = make<SteppedScrollView>(Rect(0, 0, 800, 400));
};

}  // namespace

TEST_F(ScrollViewTest, ContentFollowsTheFingerAndRunsOnToAnAlignedRest) {
    window->touchDown({400, 300});
    window->touchMove({400, 296});
    EXPECT_EQ(offset(), 0);  // a press that trembles is no drag
    move(296, 200, 4);
    EXPECT_EQ(offset(), 100);
    EXPECT_TRUE(scroll->isDragging());
    move(200, 140, 2);
    window->touchUp({400, 140});
    EXPECT_TRUE(scroll->isDecelerating());
    double before = offset(), lastStep = 1000;
    while (scroll->isDecelerating() && clock.now() < TimePoint(10s)) {
        frames(Seconds(1.0 / 60));
        EXPECT_LE(offset() - before, lastStep + 1);  // ever slower
        lastStep = offset() - before;
        before = offset();
    }
    EXPECT_GT(offset(), 400);
    EXPECT_NEAR(std::remainder(offset(), 40), 0, 0.01);
    EXPECT_FALSE(loop.wantsFrames());
}

TEST_F(ScrollViewTest, AFingerThatRestsBeforeItLetsGoThrowsNothing) {
    window->touchDown({400, 300});
    move(300, 190, 5);
    frames(0.5s);
    window->touchUp({400, 190});
    frames(0.3s);
    EXPECT_EQ(offset(), 120);  // only to the nearest place of rest
    EXPECT_FALSE(scroll->isDecelerating());
}

TEST_F(ScrollViewTest, TheEndsGiveALittleAndSpringBack) {
    window->touchDown({400, 100});
    move(100, 390, 5);
    EXPECT_LT(offset(), 0);
    EXPECT_GT(offset(), -15);
    window->touchCancel();
    frames(0.25s);
    EXPECT_EQ(offset(), 0);

    scroll->setContentOffset({0, 1500}, false);
    window->touchDown({400, 390});
    move(390, 90, 3);
    window->touchUp({400, 90});
    double furthest = 0;
    for (int frame = 0; frame < 90; ++frame) {
        frames(Seconds(1.0 / 60));
        furthest = std::max(furthest, offset());
    }
    EXPECT_GT(furthest, 1600);
    EXPECT_LE(furthest, 1615);
    EXPECT_EQ(offset(), 1600);
    EXPECT_FALSE(loop.wantsFrames());
}

TEST_F(ScrollViewTest, ATouchHoldsARunningListWhereItIs) {
    window->touchDown({400, 300});
    move(300, 150, 4);
    window->touchUp({400, 150});
    frames(0.1s);
    window->touchDown({400, 200});
    const double held = offset();
    frames(0.5s);
    EXPECT_EQ(offset(), held);
    move(200, 180, 1);
    EXPECT_EQ(offset(), held + 20);  // and goes on with that finger
    window->touchUp({400, 180});
    frames(3s);
    EXPECT_NEAR(std::remainder(offset(), 40), 0, 0.01);
}

TEST_F(ScrollViewTest, OffsetsStayInsideOnWholePixelsWhateverAsks) {
    scroll->setContentOffset({0, 5000}, false);
    EXPECT_EQ(offset(), 1600);
    scroll->setContentOffset({0, 100.3}, false);
    EXPECT_EQ(offset(), 100.5);
    scroll->setContentOffset({0, 900}, true);
    frames(0.1s);
    EXPECT_GT(offset(), 100.5);
    EXPECT_LT(offset(), 900);
    scroll->setContentSize({800, 600});  // shorter on the way
    frames(1s);
    EXPECT_EQ(offset(), 200);
    scroll->setFrame({0, 0, 800, 500});
    EXPECT_EQ(offset(), 100);

    scroll->setScrollEnabled(false);
    window->touchDown({400, 100});
    move(100, 200, 3);
    EXPECT_EQ(offset(), 100);
    window->touchUp({400, 200});

    scroll->setContentOffset({0, 0}, true);
    window->touchDown({400, 100});
    window->setRootViewController(nullptr);
    root.reset();
    scroll.reset();  // with a motion and a touch under way
    window->touchMove({400, 160});
    frames(0.5s);
}
