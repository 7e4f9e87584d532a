#include "Tests/Support/ScreenFixture.h"
#include "View Controllers/ZRNAlertController.h"
#include "View Controllers/ZRNErrorViewController.h"
#include "Views/ZRNTransportControlView.h"

namespace zornic {
namespace {

class ErrorAndAlertScreenTest : public testing::Test, protected ScreenFixture {
protected:
    ErrorAndAlertScreenTest() { show(root); }

    std::shared_ptr<ZRNErrorViewController> present() {
        const auto error = make<ZRNErrorViewController>();
        error->setErrorTitle("Not now");
        error->setErrorMessage("Try again.");
        root->presentViewController(error, false);
        advance(0);
        return error;
    }

    const std::shared_ptr<ViewController> root = make<ViewController>();
};

TEST_F(ErrorAndAlertScreenTest, AnErrorIsShownUntilTheDriverHasReadIt) {
    auto error = present();
    EXPECT_EQ(error->titleLabel()->text(), "Not now") << "set before its view was there";
    EXPECT_EQ(error->titleLabel()->frame(), Rect(12, 96, 776, 87));
    EXPECT_EQ(error->messageLabel()->frame(), Rect(12, 177, 160, 39)) << "as wide as its text";
    ASSERT_TRUE(error->okButton());
    EXPECT_EQ(error->okButton()->frame().origin, (Point{212, 259}));
    EXPECT_EQ(error->okButton()->titleForState(ControlState::Normal), "OK");
    const Image ground = error->okButton()->backgroundImageForState(ControlState::Normal);
    EXPECT_EQ(error->okButton()->frame().size, (Size{376, ground.size().height}));
    EXPECT_GE(ground.size().height, 44) << "large enough to be hit";
    EXPECT_EQ(ground.capInsets()->left, ground.size().height / 2);
    tap(*error->okButton());
    advance(1);
    EXPECT_FALSE(root->presentedViewController());

    setUIMode(2);
    error = present();
    EXPECT_FALSE(error->okButton());
    EXPECT_EQ(error->titleLabel()->frame().y(), 136);
    EXPECT_EQ(error->messageLabel()->frame().y(), 217);
    EXPECT_TRUE(window->pressBack());
    advance(1);
    EXPECT_FALSE(root->presentedViewController()) << "a knob gets out, too";
}

TEST_F(ErrorAndAlertScreenTest, AnErrorsTextsMayChangeWhileItIsShown) {
    const auto error = present();
    std::string longMessage;
    for (int i = 0; i < 30; ++i) longMessage += "Words ";
    error->setErrorMessage(longMessage);
    advance(0);
    const Rect message = error->messageLabel()->frame();
    EXPECT_EQ(message.origin, (Point{12, 177}));
    EXPECT_EQ(message.height(), 77) << "two lines, whatever stood there before";
    EXPECT_GT(message.width(), 700);
    EXPECT_LE(message.width(), 776);

    error->setErrorTitle(std::nullopt);
    error->setErrorMessage(std::nullopt);
    advance(0);
    EXPECT_EQ(error->titleLabel()->text() + error->messageLabel()->text(), "");
    error->setErrorTitle("Later");
    error->view()->setFrame({0, 0, 600, 480});
    advance(0);
    EXPECT_EQ(error->titleLabel()->frame(), Rect(12, 96, 576, 87));

    const auto hosts = make<ZRNErrorViewController>();
    hosts->setView(make<View>());
    hosts->setErrorTitle("Later");
    show(hosts);
    EXPECT_FALSE(hosts->titleLabel()) << "a host's own view has none of it";
}

TEST_F(ErrorAndAlertScreenTest, AnAlertTakesTheChargeOffTheButtonsBehindIt) {
    const auto controls = make<ZRNTransportControlView>();
    const auto plain = make<Button>();
    root->view()->addSubview(controls);
    root->view()->addSubview(plain);
    const std::vector<std::shared_ptr<View>> buttons = {controls->leftButton(), controls->playPauseButton(),
                                                        controls->fastForwardButton(), plain};
    for (const auto& button : buttons) button->setCharge(-0.9F);
    const auto charges = [&] {
        std::vector<float> all;
        for (const auto& button : buttons) all.push_back(button->charge());
        return all;
    };

    const auto alert = make<ZRNAlertController>("Title", "", AlertControllerStyle::ActionSheet);
    alert->addAction(make<AlertAction>("Cancel", AlertActionStyle::Cancel, nullptr));
    root->presentViewController(alert, true);
    EXPECT_EQ(charges(), (std::vector{-0.9F, -0.9F, -0.9F, -0.9F})) << "still on its way";
    advance(1);
    EXPECT_EQ(charges(), (std::vector{0.0F, 0.0F, 0.0F, -0.9F}));
    alert->choose(alert->actions().front());
    EXPECT_EQ(charges(), (std::vector{0.0F, 0.0F, 0.0F, -0.9F}));
    advance(1);
    EXPECT_EQ(charges(), (std::vector{-0.9F, -0.9F, -0.9F, -0.9F}));
    plain->setCharge(0);
    root->presentViewController(make<AlertController>("", "", AlertControllerStyle::Alert), false);
    EXPECT_EQ(charges(), (std::vector{-0.9F, -0.9F, -0.9F, 0.0F})) << "a plain alert leaves them alone";
}

}  // namespace
}  // namespace zornic
