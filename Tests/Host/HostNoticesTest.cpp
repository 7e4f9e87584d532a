#include "Host/Display/PangoTextEngine.h"
#include "Host/HostNotices.h"
#include "Platform/Foundation/RunLoop.h"

namespace helmo {
namespace {

using namespace zornic;

class HostNoticesTest : public testing::Test {
protected:
    HostNoticesTest() {
        TextEngine::install(std::make_shared<PangoTextEngine>());
        window->setScreen(screen);
        window->setWindowHidden(false);
        window->setRootViewController(root);
        window->takeDamage();
    }
    ~HostNoticesTest() override {
        window->setWindowHidden(true);
        window->setRootViewController(nullptr);
        window->setScreen(nullptr);
        TextEngine::install(nullptr);
    }
    void advance(double seconds) {
        for (const TimePoint end = clock.now() + toDuration(Seconds(seconds)); clock.now() < end;) {
            clock.moveTo(clock.now() + std::chrono::milliseconds(50));
            loop.runDue();
            loop.fireFrame();
        }
    }
    std::shared_ptr<AlertController> alert() const {
        return std::dynamic_pointer_cast<AlertController>(window->topPresentedViewController());
    }
    /** Message of the alert in front; empty without one. */
    std::string shown() const { return alert() ? alert()->message() : ""; }
    void tell(const std::string& cause, const std::string& message) {
        notices->tell(cause, [message] { return HostNotices::Text{"Title", message}; });
    }

    ManualClock clock;
    RunLoop loop{clock};
    const std::shared_ptr<Screen> screen = make<Screen>(Size{400, 240}, 1.0);
    const std::shared_ptr<Window> window = make<Window>(Rect{0, 0, 400, 240});
    const std::shared_ptr<ViewController> root = make<ViewController>();
    const std::shared_ptr<HostNotices> notices = make<HostNotices>(window);
};

TEST_F(HostNoticesTest, CauseAfterCauseIsToldEachInOneMessageAndWhatIsSaidOnceStaysSaid) {
    tell("songs", "1 song");
    tell("songs", "2 songs");
    notices->tellOnce("disk", {"Title", "full"});
    EXPECT_EQ(shown(), "") << "it waits for what else there is to say";
    advance(2);
    EXPECT_EQ(shown(), "2 songs");
    tell("songs", "3 songs");
    notices->tellOnce("disk", {"Title", "full"});
    window->pressBack();
    advance(2.5);
    EXPECT_EQ(shown(), "full");
    advance(7);
    EXPECT_EQ(shown(), "3 songs");
    advance(7);
    notices->tellOnce("disk", {"Title", "full"});
    advance(5);
    EXPECT_EQ(shown(), "");
}

TEST_F(HostNoticesTest, AQuestionOfAScreenIsNeitherCoveredNorTakenAway) {
    const auto question = make<AlertController>("Delete?", "question", AlertControllerStyle::Alert);
    question->addAction(make<AlertAction>("No", AlertActionStyle::Cancel, [] {}));
    tell("songs", "1 song");
    root->presentViewController(question, false);
    advance(20);
    EXPECT_EQ(shown(), "question");
    window->pressBack();
    advance(2.5);
    EXPECT_EQ(shown(), "1 song");

    alert()->presentViewController(question, false);  // asked while the message stands
    advance(20);
    EXPECT_EQ(shown(), "question");
    window->pressBack();
    advance(8);
    EXPECT_EQ(shown(), "") << "and the message does not stay behind";
    tell("songs", "2 songs");
    advance(2);
    EXPECT_EQ(shown(), "2 songs");
}

}  // namespace
}  // namespace helmo
