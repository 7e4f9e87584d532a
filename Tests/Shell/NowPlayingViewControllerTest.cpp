#include "Platform/Toolkit/NavigationController.h"
#include "Tests/Support/ScreenFixture.h"
#include "View Controllers/ZRNNowPlayingViewController.h"

using namespace zornic;
using testing::ElementsAre;
using Body = ZRNNowPlayingViewController;

namespace {

/** Answers only what is required. */
struct Source : Object, ZRNNowPlayingViewControllerDataSource {
    std::string artistTextForNowPlayingController(Body&) override { return "Artist"; }
    std::string albumTextForNowPlayingController(Body&) override { return "Album"; }
    std::string titleForNowPlayingController(Body&) override { return "Title"; }
    Image backgroundArtForNowPlayingController(Body&) override { return {}; }
    bool nowPlayingViewControllerIsShowingExplicitTrack(Body&) override { return true; }
    double playbackDurationForNowPlayingViewControllerWithElapsedTime(Body&, double& elapsed) override {
        elapsed += 50;
        return 200;
    }
    bool nowPlayingViewControllerIsPlaying(Body&) override { return true; }
};

struct ModesSource : Source {
    std::optional<std::uint64_t> shuffleTypeForNowPlayingViewController(Body&) override { return shuffle; }
    std::optional<std::uint64_t> repeatTypeForNowPlayingViewController(Body&) override { return repeat; }
    std::optional<std::string> repeatStringForNowPlayingViewController(Body&) override {
        return repeatString;
    }
    std::optional<std::uint64_t> shuffle = 0, repeat = 0;
    std::optional<std::string> repeatString;
};

struct SilentDelegate : Object, ZRNNowPlayingViewControllerDelegate {};

struct Delegate : SilentDelegate {
    using Sent = std::pair<int, int>;
    void nowPlayingViewControllerDidSendActionState(Body&, ZRNNowPlayingActionType action,
                                                    ZRNNowPlayingActionState state) override {
        sent.emplace_back(action, state);
    }
    std::optional<bool> nowPlayingViewControllerShouldDisplayButtonWithImageTinted(
        Body&, ZRNNowPlayingActionType button, Image&, bool& tinted) override {
        tinted = button == ZRNNowPlayingActionTypeLeft;
        return button != ZRNNowPlayingActionTypeFastForward;
    }
    std::optional<bool> nowPlayingViewControllerShouldEnableButton(Body&,
                                                                   ZRNNowPlayingActionType button) override {
        return button != disabled;
    }
    std::optional<bool> nowPlayingViewControllerCanShuffle(Body&) override { return true; }
    std::optional<bool> nowPlayingViewControllerCanRepeat(Body&) override { return true; }
    void nowPlayingViewControllerToggleRepeat(Body&) override { ++repeatTaps; }

    std::vector<Sent> sent;
    int repeatTaps = 0;
    ZRNNowPlayingActionType disabled{-1};
};

struct NowPlayingViewControllerTest : testing::Test, ScreenFixture {
    void showWith(const std::shared_ptr<Source>& shown,
                  const std::shared_ptr<ZRNNowPlayingViewControllerDelegate>& told) {
        body->setDataSource(shown);
        body->setDelegate(told);
        show(body);
    }
    const std::shared_ptr<ZRNButton>& left() { return body->transportControlView()->leftButton(); }
    const std::shared_ptr<ZRNButton>& forward() { return body->transportControlView()->fastForwardButton(); }

    const std::shared_ptr<Body> body = make<Body>();
    const std::shared_ptr<ModesSource> source = make<ModesSource>();
    const std::shared_ptr<Delegate> delegate = make<Delegate>();
};

TEST_F(NowPlayingViewControllerTest, AHeldButtonReportsItsBeginningOnceAndItsEndHoweverItIsLetGo) {
    showWith(source, delegate);
    const struct {
        double held;
        unsigned end;
        std::vector<Delegate::Sent> sent;
    } cases[] = {
        {0.3, ControlEvent::TouchUpInside, {{0, 2}}},
        {1.5, ControlEvent::TouchUpInside, {{0, 1}, {0, 2}}},
        {0.6, ControlEvent::TouchUpOutside, {{0, 1}, {0, 2}}},
        {0.1, ControlEvent::TouchCancel, {{0, 2}}},
    };
    for (const auto& c : cases) {
        delegate->sent.clear();
        left()->sendActions(ControlEvent::TouchDown);
        advance(c.held);
        left()->sendActions(c.end);
        advance(2);
        EXPECT_EQ(delegate->sent, c.sent);
    }
    delegate->sent.clear();
    tap(*body->transportControlView()->playPauseButton());
    EXPECT_THAT(delegate->sent, ElementsAre(Delegate::Sent(2, 2)));

    // Of two buttons held at once the second release names none.
    delegate->sent.clear();
    left()->sendActions(ControlEvent::TouchDown);
    forward()->sendActions(ControlEvent::TouchDown);
    left()->sendActions(ControlEvent::TouchUpInside);
    forward()->sendActions(ControlEvent::TouchUpInside);
    advance(1);
    EXPECT_THAT(delegate->sent, ElementsAre(Delegate::Sent(1, 2), Delegate::Sent(-1, 2)));
}

TEST_F(NowPlayingViewControllerTest, ADelegateMayDestroyTheScreenInTheMiddleOfAPress) {
    struct Closing : SilentDelegate {
        void nowPlayingViewControllerDidSendActionState(Body&, ZRNNowPlayingActionType,
                                                        ZRNNowPlayingActionState) override {
            close();
        }
        std::function<void()> close;
    };
    auto screenBody = make<Body>();
    const auto closing = make<Closing>();
    closing->close = [&] { screenBody = nullptr; };
    screenBody->setDelegate(closing);
    screenBody->loadViewIfNeeded();
    const auto pressed = screenBody->transportControlView()->leftButton();
    pressed->sendActions(ControlEvent::TouchDown);
    pressed->sendActions(ControlEvent::TouchUpInside);
    EXPECT_EQ(screenBody, nullptr);
    pressed->sendActions(ControlEvent::TouchDown);
    advance(1);
}

TEST_F(NowPlayingViewControllerTest, ASilentDelegateLeavesTheTransportAndNoPlayModes) {
    showWith(make<Source>(), make<SilentDelegate>());
    for (const auto& button : {left(), forward(), body->transportControlView()->playPauseButton()})
        EXPECT_TRUE(!button->isHidden() && button->isEnabled() && !button->isSelected());
    const auto& modes = body->playModeControlView();
    for (const auto& button : {modes->repeatButton(), modes->brivoButton(), modes->shuffleButton()})
        EXPECT_TRUE(button->isHidden());
    EXPECT_EQ(left()->imageForState(ControlState::Normal).name(), "HelmoRewindButton");
    EXPECT_EQ(body->nowPlayingView()->progressView()->timeLabel()->text(), "0:50");
    EXPECT_EQ(body->nowPlayingView()->titleLabel()->text(), "Title");
    EXPECT_TRUE(body->nowPlayingView()->isExplicitTrack());
    tap(*left());
}

TEST_F(NowPlayingViewControllerTest, TheDelegateDecidesAboutEachButton) {
    delegate->disabled = ZRNNowPlayingActionTypePlayPause;
    showWith(source, delegate);
    EXPECT_TRUE(left()->isSelected());
    EXPECT_TRUE(forward()->isHidden());
    tap(*body->transportControlView()->playPauseButton());
    EXPECT_TRUE(delegate->sent.empty());
    tap(*body->playModeControlView()->repeatButton());
    EXPECT_EQ(delegate->repeatTaps, 1);
    EXPECT_TRUE(body->playModeControlView()->brivoButton()->isHidden());
}

TEST_F(NowPlayingViewControllerTest, PlayModesAreNamedByTypeUnlessTheSourceNamesThem) {
    showWith(source, delegate);
    const auto& repeat = body->playModeControlView()->repeatButton();
    const auto& shuffle = body->playModeControlView()->shuffleButton();
    const std::pair<std::uint64_t, std::string> cases[] = {
        {0, "Repeat off"}, {1, "Repeat song"}, {2, "Repeat all"}, {3, "Repeat off"}};
    for (const auto& [type, label] : cases) {
        source->repeat = source->shuffle = type;
        body->updatePlayControls();
        EXPECT_EQ(repeat->titleForState(ControlState::Normal), label);
        EXPECT_EQ(shuffle->titleForState(ControlState::Normal), type == 0 ? "Shuffle off" : "Shuffle all");
        EXPECT_EQ(repeat->isSelected(), type != 0);
        EXPECT_EQ(shuffle->isSelected(), type != 0);
    }
    source->repeatString = "Repeat #album#";
    source->shuffle = std::nullopt;
    body->updatePlayControls();
    EXPECT_EQ(repeat->titleForState(ControlState::Normal), "Repeat album");
    EXPECT_TRUE(shuffle->isSelected() && !shuffle->isHidden()) << "without a type it stays as it was";
}

TEST_F(NowPlayingViewControllerTest, WithoutADataSourceNothingIsShownAndAskingLoadsNothing) {
    body->reloadData();
    body->updatePlayControls();
    EXPECT_FALSE(body->isViewLoaded());
    EXPECT_EQ(body->transportControlView(), nullptr);
    auto passing = make<ModesSource>();
    showWith(passing, delegate);
    EXPECT_FALSE(body->nowPlayingView()->isHidden());
    passing = nullptr;
    body->reloadData();
    EXPECT_TRUE(body->nowPlayingView()->isHidden() && body->transportControlView()->isHidden() &&
                body->playModeControlView()->isHidden());
    EXPECT_EQ(body->nowPlayingView()->titleLabel()->text(), "");
}

TEST_F(NowPlayingViewControllerTest, TheBarIsClearWhileTheScreenIsOnViewAndThenAsItWas) {
    const auto list = make<ViewController>();
    const auto navigation = make<NavigationController>(list);
    body->setDataSource(source);
    show(navigation);
    const auto& bar = navigation->navigationBar();
    for (const std::optional<Color>& color : {std::optional<Color>(), std::optional(Color::rgb(0x123456))}) {
        bar->setBarColor(color);
        bar->setHidesShadow(color.has_value());
        navigation->pushViewController(body, true);
        advance(1);
        EXPECT_EQ(bar->barColor(), Color::clear());
        EXPECT_TRUE(bar->hidesShadow());
        navigation->popViewControllerAnimated(true);
        advance(1);
        EXPECT_EQ(bar->barColor(), color);
        EXPECT_EQ(bar->hidesShadow(), color.has_value());
    }
}

TEST_F(NowPlayingViewControllerTest, TextsControlsAndModesDoNotMeetOnAnyDisplay) {
    for (const Size size : {Size{400, 240}, Size{800, 480}, Size{1280, 720}, Size{1920, 720}})
        for (const int mode : {0, 1, 2}) {
            SCOPED_TRACE(testing::Message() << size.width << " in mode " << mode);
            screen->setSize(size, 1);
            setUIMode(mode);
            const auto navigation = make<NavigationController>(make<ViewController>());
            const auto fresh = make<Body>();
            fresh->setDataSource(source);
            fresh->setDelegate(delegate);
            show(navigation);
            navigation->pushViewController(fresh, true);
            advance(1);
            const auto onWindow = [](const View& view) { return view.convertToWindow(view.bounds()); };
            const auto& nowPlaying = fresh->nowPlayingView();
            EXPECT_EQ(onWindow(*nowPlaying), Rect({0, 0}, size)) << "it runs under the bar";
            const Rect album = onWindow(*nowPlaying->albumLabel()),
                       progress = onWindow(*nowPlaying->progressView());
            const Rect play = onWindow(*fresh->transportControlView()->playPauseButton());
            const Rect modes = onWindow(*fresh->playModeControlView());
            EXPECT_GE(play.y(), album.maxY());
            EXPECT_LE(play.maxY(), progress.y() + 0.001);
            EXPECT_LE(progress.maxY(), modes.y());
            EXPECT_EQ(modes, Rect(0, size.height - 42, size.width, 42));

            window->touchDown({2, size.height / 2});  // a swipe back that is let go changes nothing
            window->touchMove({40, size.height / 2});
            advance(0.5);
            window->touchUp({40, size.height / 2});
            advance(1);
            EXPECT_EQ(onWindow(*fresh->transportControlView()->playPauseButton()), play);
        }
}

}  // namespace
