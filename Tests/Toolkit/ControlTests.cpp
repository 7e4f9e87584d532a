#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/Button.h"
#include "Platform/Toolkit/Window.h"
#include "Tests/Support/RecordingCanvas.h"

using namespace zornic;

namespace {

constexpr unsigned allEvents = ControlEvent::TouchDown | ControlEvent::TouchUpInside |
                               ControlEvent::TouchUpOutside | ControlEvent::TouchCancel;

struct Receiver : Object {
    std::string log;
    Task onAction;
};

struct Picture : ImageSource {
    explicit Picture(Size size) : _size(size) {}
    Size size() const override { return _size; }
    double scale() const override { return 0; }
    std::size_t cost() const override { return 0; }
    Size _size;
};

Image picture(const std::string& name, double side = 20) {
    return Image(std::make_shared<Picture>(Size{side, side}), name);
}

struct ControlTest : testing::Test {
    ControlTest() {
        window->setWindowHidden(false);
        button->setFrame({100, 100, 100, 50});
        window->addSubview(button);
        const std::pair<unsigned, char> letters[] = {{ControlEvent::TouchDown, 'd'},
                                                     {ControlEvent::TouchUpInside, 'i'},
                                                     {ControlEvent::TouchUpOutside, 'o'},
                                                     {ControlEvent::TouchCancel, 'c'}};
        for (const auto& [event, letter] : letters)
            button->addTarget(
                receiver,
                [r = receiver.get(), l = letter](const auto&) {
                    r->log += l;
                    if (const auto act = r->onAction) act();
                },
                event);
    }
    void down() { button->touchBegan({{150, 120}, {}}); }
    void move(double x) { button->touchMoved({{x, 120}, {}}); }
    void up(double x) { button->touchEnded({{x, 120}, {}}); }
    RecordingCanvas drawn() {
        window->layoutIfNeeded();
        RecordingCanvas canvas;
        window->render(canvas);
        return canvas;
    }

    ManualClock clock;
    RunLoop loop{clock};
    std::shared_ptr<Receiver> receiver = make<Receiver>();
    std::shared_ptr<Window> window = make<Window>(Rect{0, 0, 800, 480});
    std::shared_ptr<Button> button = make<Button>();
};

}  // namespace

TEST_F(ControlTest, PressFollowsTheFinger) {
    down();
    EXPECT_TRUE(button->isHighlighted());
    move(215);  // a little off still presses
    EXPECT_TRUE(button->isHighlighted());
    move(230);
    EXPECT_FALSE(button->isHighlighted());
    move(150);
    EXPECT_TRUE(button->isHighlighted());
    up(150);
    EXPECT_FALSE(button->isHighlighted());
    down();
    up(400);
    down();
    button->touchCancelled({});
    button->knobPressBegan();
    button->knobPressEnded(false);
    up(150);  // nothing is pressed
    EXPECT_EQ(receiver->log, "didodcdi");
}

TEST_F(ControlTest, PressThatCanGoOnNoLongerIsCancelledOnce) {
    down();
    button->setEnabled(false);
    up(150);
    down();
    EXPECT_EQ(receiver->log, "dc");
    button->setEnabled(true);
    down();
    button->removeFromSuperview();
    up(150);
    EXPECT_EQ(receiver->log, "dcdc");
    EXPECT_FALSE(button->isHighlighted());
}

TEST_F(ControlTest, ActionMayDestroyControlOrTargets) {
    std::weak_ptr<Button> gone = button;
    const auto second = make<Receiver>();
    button->addTarget(
        second, [s = second.get()](const auto&) { s->log += 's'; }, allEvents);
    receiver->onAction = [&] {
        button->removeAllTargets();
        button->removeFromSuperview();
        button.reset();
    };
    const auto pressed = button.get();
    pressed->touchBegan({{150, 120}, {}});
    EXPECT_TRUE(gone.expired());
    EXPECT_EQ(receiver->log, "d");
    EXPECT_EQ(second->log, "s");  // was there when it happened

    button = make<Button>();
    button->addTarget(
        make<Receiver>(), [](const auto&) { FAIL() << "its target is gone"; }, allEvents);
    button->sendActions(ControlEvent::TouchDown);
}

TEST_F(ControlTest, ButtonPlacesImageAndTitleAsOne) {
    button->titleLabel()->setFont(Font::systemFont(10));
    button->setTitle("Play", ControlState::Normal);  // 20 x 12
    button->setImage(picture("Icon"), ControlState::Normal);
    EXPECT_EQ(button->sizeThatFits({}), (Size{40, 20}));
    button->layoutIfNeeded();
    EXPECT_EQ(button->imageView()->frame(), Rect(30, 15, 20, 20));
    EXPECT_EQ(button->titleLabel()->frame(), Rect(50, 19, 20, 12));

    button->setContentEdgeInsets({0, 20, 0, 0});
    button->setTitleEdgeInsets({10, 0, 0, 0});
    button->layoutIfNeeded();
    EXPECT_EQ(button->imageView()->frame(), Rect(40, 15, 20, 20));
    EXPECT_EQ(button->titleLabel()->frame(), Rect(60, 24, 20, 12));

    button->setTitle("Play everything now", ControlState::Normal);
    button->layoutIfNeeded();
    EXPECT_EQ(button->titleLabel()->frame().width(), 60);  // what the image leaves
    button->setImage({}, ControlState::Normal);
    button->setTitle("", ControlState::Normal);
    EXPECT_TRUE(drawn().texts.empty());
    EXPECT_TRUE(drawn().images.empty());
}

TEST_F(ControlTest, ButtonShowsItsState) {
    button->setTitle("Off", ControlState::Normal);
    button->setTitle("On", ControlState::Selected);
    button->setImage(picture("Icon").withRenderingMode(ImageRenderingMode::AlwaysTemplate),
                     ControlState::Normal);
    button->setBackgroundImage(picture("Pressed"), ControlState::Highlighted);
    EXPECT_NE(drawn().text("Off"), nullptr);
    button->setSelected(true);
    EXPECT_NE(drawn().text("On"), nullptr);
    EXPECT_EQ(drawn().image("Icon")->tint, _externalSystemTealColor());
    EXPECT_EQ(drawn().image("Pressed"), nullptr);
    down();
    const auto pressed = drawn();
    EXPECT_EQ(pressed.image("Pressed")->area, Rect(100, 100, 100, 50));
    EXPECT_NE(pressed.text("Off"),
              nullptr);  // a pressed button without a title of its own has the normal one
    up(400);
    button->setEnabled(false);
    const auto disabled = drawn();
    ASSERT_EQ(disabled.groups.size(), 2u);  // title and image, dimmed
    EXPECT_EQ(disabled.groups[0].opacity, 0.4);
    EXPECT_FALSE(button->canBecomeFocused());
}

TEST_F(ControlTest, FocusedButtonIsFilledWithTitleAndGlyphCutOut) {
    window->setBackgroundColor(Color::rgb(0x123456));
    button->setTitle("Play", ControlState::Normal);
    button->setImage(picture("Icon").withRenderingMode(ImageRenderingMode::AlwaysTemplate),
                     ControlState::Normal);
    button->setFocused(true);
    const auto focused = drawn();
    EXPECT_EQ(focused.fills.back().color, _externalSystemTealColor());
    EXPECT_EQ(focused.fills.back().radius, 4);
    EXPECT_LT(focused.fills.back().step, focused.text("Play")->step);
    EXPECT_EQ(focused.text("Play")->color, Color::rgb(0x123456));
    EXPECT_EQ(focused.image("Icon")->tint, Color::rgb(0x123456));
    button->setFocused(false);
    EXPECT_EQ(drawn().text("Play")->color, Color::whiteColor());
}
