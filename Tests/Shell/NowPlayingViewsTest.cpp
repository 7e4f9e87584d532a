#include <cmath>
#include <limits>

#include "Tests/Support/RecordingCanvas.h"
#include "Tests/Support/ScreenFixture.h"
#include "Views/ZRNNowPlayingButton.h"
#include "Views/ZRNNowPlayingView.h"
#include "Views/ZRNPlayModeControlView.h"
#include "Views/ZRNTransportControlView.h"

using namespace zornic;

namespace {

struct NowPlayingViewsTest : testing::Test, ScreenFixture {
    template <class Kind>
    std::shared_ptr<Kind> shown(const std::shared_ptr<Kind>& view, const Rect& frame) {
        view->setFrame(frame);
        window->addSubview(view);
        settle();
        return view;
    }
    template <class Kind>
    std::shared_ptr<Kind> shown(const Rect& frame) {
        return shown(make<Kind>(), frame);
    }
};

double baselineOf(Label& label) { return label.frame().y() + label.firstBaselineFromTop(); }

TEST_F(NowPlayingViewsTest, ProgressShowsWhatIsKnownOfTheTimeAndALiveStreamHasTheWholeStrip) {
    const double none = std::numeric_limits<double>::quiet_NaN(),
                 endless = std::numeric_limits<double>::infinity();
    const struct {
        double elapsed, duration;
        std::string elapsedText, remainingText;
        float progress;
        bool tick;
    } cases[] = {
        {61.9, 200, "1:01", "-2:19", 0.3095F, true},
        {-1, 200, "0:00", "-3:20", 0, true},
        {250, 200, "4:10", "-0:00", 1, true},
        {3600, 7325.5, "1:00:00", "-1:02:05", 0.49143F, true},
        {-1, -1, "", "Live", 0, true},
        {30, 0, "", "", 0, false},
        {30, none, "", "", 0, false},
        {none, 200, "", "", 0, false},
        {30, endless, "", "", 0, false},
    };
    const auto view = shown<ZRNProgressView>({0, 0, 500, 12});
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.elapsed << " of " << c.duration);
        view->setPlaybackTimeDuration(c.elapsed, c.duration);
        EXPECT_EQ(view->timeLabel()->text(), c.elapsedText);
        EXPECT_EQ(view->timeRemainingLabel()->text(), c.remainingText);
        EXPECT_NEAR(view->progress(), c.progress, 0.001);
        EXPECT_EQ(!view->indicatorView()->isHidden(), c.tick);
    }
    view->setPlaybackTimeDuration(1e300, 1e301);  // no time of this world, and no overflow either

    view->setPlaybackTimeDuration(50, 200);
    settle();
    EXPECT_EQ(view->trackView()->convertToWindow(view->trackView()->bounds()), Rect(52, 4, 396, 2.5));
    EXPECT_EQ(view->indicatorView()->frame(), Rect(99, 0, 1.5, 2.5));
    EXPECT_EQ(view->timeRemainingLabel()->frame(), Rect(448, 0, 52, 12));
    view->setPlaybackTimeDuration(-1, -1);
    settle();
    EXPECT_EQ(view->timeRemainingLabel()->frame(), view->bounds());
    EXPECT_TRUE(view->timeLabel()->isHidden() && view->trackView()->superview()->isHidden());
}

TEST_F(NowPlayingViewsTest, TransportButtonsAreLaidOutForTheHandThatReachesThem) {
    const auto view = shown<ZRNTransportControlView>({0, 0, 401, 120});
    EXPECT_EQ(view->playPauseButton()->frame(), Rect(178, 13, 44, 44));
    EXPECT_EQ(view->leftButton()->frame(), Rect(200 - 73.5 - 40, 19, 40, 32));
    EXPECT_EQ(view->fastForwardButton()->frame(), Rect(200 + 73.5, 19, 40, 32));
    view->setMode(2);
    view->setFrame({0, 0, 301, 120});
    settle();
    EXPECT_EQ(view->playPauseButton()->frame().x(), 178) << "mode 2 keeps the places";
    view->setProgressActive(true);
    view->setPauseImage(view->defaultLeftButtonImage());
    EXPECT_EQ(view->playPauseButton()->imageForState(ControlState::Normal).name(), "HelmoRewindButton");

    for (const int mode : {1, 2}) {
        setUIMode(mode);
        view->setFrame({0, 0, 344, 71});
        settle();
        EXPECT_EQ(view->leftButton()->frame(), Rect(12, 10, 100, 51));
        EXPECT_EQ(view->playPauseButton()->frame(), Rect(122, 10, 100, 51));
        EXPECT_EQ(view->fastForwardButton()->frame(), Rect(232, 10, 100, 51));
    }
}

TEST_F(NowPlayingViewsTest, TheButtonsLookFollowsModeFocusAndSelection) {
    const auto button = shown(ZRNButton::buttonWithType(ButtonType::Custom), {0, 0, 120, 40});
    button->setLabelTemplateString("Repeat #off#");
    EXPECT_EQ(button->titleForState(ControlState::Normal), "Repeat off");
    button->setImage(Image::named("HelmoPlayButton", Bundle::platformBundle(), {}), ControlState::Normal);
    const auto ground = [&]() -> std::optional<Color> {
        settle();
        const auto& lowest = button->layer()->sublayers().front();
        return lowest->cornerRadius() > 0 ? lowest->backgroundColor() : std::nullopt;
    };
    const auto& title = button->titleLabel()->layer();
    const auto& image = button->imageView()->layer();

    EXPECT_EQ(ground(), std::nullopt);
    button->setShowBezelInTouch(true);
    EXPECT_EQ(ground(), _externalSystemDarkGrayColor());
    EXPECT_EQ(button->imageView()->tintColor(), Color::whiteColor());
    button->setSelected(true);
    settle();
    EXPECT_EQ(button->imageView()->tintColor(), button->tintColor());
    button->setFocused(true);
    EXPECT_EQ(ground(), _externalSystemDarkGrayColor()) << "focus means nothing under touch";

    setUIMode(2);
    EXPECT_EQ(ground(), button->tintColor());
    EXPECT_EQ(title->compositingMode(), CompositingMode::DestinationOut);
    EXPECT_EQ(image->compositingMode(), CompositingMode::DestinationOut);
    button->setSelected(false);
    settle();
    EXPECT_EQ(title->compositingMode(), CompositingMode::DestinationOut);
    EXPECT_EQ(image->compositingMode(), CompositingMode::SourceOver);
    button->setFocused(false);
    EXPECT_EQ(ground(), _externalSystemSuperDarkGrayColor());
    EXPECT_EQ(title->compositingMode(), CompositingMode::SourceOver);

    button->setNeedsLayout();
    EXPECT_TRUE(window->takeDamage().empty()) << "styling anew draws nothing anew";
    button->setShowBezelInTouch(false);
    setUIMode(0);
    EXPECT_EQ(ground(), std::nullopt) << "no bezel stays behind when the car's mode changes";
}

TEST_F(NowPlayingViewsTest, TheThreeLinesStandOnTheirBaselinesAndTheExplicitMarkStaysOnTheScreen) {
    const auto view = shown<ZRNNowPlayingView>({0, 0, 400, 240});
    view->artistLabel()->setText("Artist");
    view->titleLabel()->setText("A title that is much too long for the width of this display");
    view->albumLabel()->setText("Album");
    view->setNeedsLayout();
    settle();
    EXPECT_NEAR(baselineOf(*view->artistLabel()), 54, 0.01);
    EXPECT_NEAR(baselineOf(*view->titleLabel()), 87.5, 0.01) << "shrunk, too";
    EXPECT_NEAR(baselineOf(*view->albumLabel()), 107, 0.01);
    EXPECT_EQ(view->titleLabel()->frame().x(), 12);
    EXPECT_EQ(view->titleLabel()->frame().width(), 376);
    EXPECT_EQ(view->progressView()->frame(), Rect(12, 177.5, 376, 12));
    EXPECT_EQ(view->artworkView()->frame(), Rect(0, -80, 400, 400));

    view->titleLabel()->setText("");
    view->setNeedsLayout();
    settle();
    EXPECT_EQ(view->titleLabel()->frame().height(), 39) << "an empty line keeps its height";

    for (const std::string title : {"Short", "A title that is much too long for the width of this display"}) {
        SCOPED_TRACE(title);
        view->titleLabel()->setText(title);
        view->setExplicitTrack(true);
        settle();
        const Rect glyph = view->explicitImageView()->frame(), text = view->titleLabel()->frame();
        EXPECT_EQ(glyph, Rect(text.maxX() + 9, 87.5 - 14, 14, 14));
        EXPECT_GE(text.x(), 12);
        EXPECT_LE(glyph.maxX(), 388.5);
        view->setExplicitTrack(false);
        EXPECT_EQ(view->explicitImageView(), nullptr);
    }
}

TEST_F(NowPlayingViewsTest, TheNowPlayingButtonPointsAwayFromItsTextAndInvertsWhenPressed) {
    int taps = 0;
    const auto target = make<View>();
    const auto container = ZRNViewForNowPlayingButton(
        44, target, [&](const auto&) { ++taps; }, false);
    shown(container, {300, 20, container->frame().width(), container->frame().height()});
    const auto button = std::dynamic_pointer_cast<ZRNNowPlayingButton>(container->subviews().front());
    ASSERT_TRUE(button);
    EXPECT_EQ(button->frame(),
              Rect(0, -14, container->frame().width() + 17, container->frame().height() + 18));
    EXPECT_EQ(button->imageView()->frame().x(), button->titleLabel()->frame().maxX() + 3.5);
    EXPECT_FALSE(button->titleLabel()->isTruncated());

    const auto teal = _externalSystemTealColor(), bar = _externalSystemBarBackgroundColor();
    EXPECT_EQ(button->backgroundColor(), bar);
    EXPECT_EQ(button->imageView()->tintColor(), teal);
    button->setHighlighted(true);
    settle();
    EXPECT_EQ(button->backgroundColor(), teal);
    EXPECT_EQ(button->imageView()->tintColor(), bar);
    EXPECT_EQ(button->titleLabel()->textColor(), bar);
    button->setHighlighted(false);
    button->sendActions(ControlEvent::TouchUpInside);
    EXPECT_EQ(taps, 1);

    const auto layers = [&] { return settle(), button->layer()->sublayers().size(); };
    const auto withBorder = layers();
    button->setHidesLeftBorder(true);
    EXPECT_EQ(layers(), withBorder - 1);
    button->setFocused(true);
    EXPECT_EQ(layers(), withBorder);
    EXPECT_EQ(button->titleLabel()->layer()->compositingMode(), CompositingMode::DestinationOut);
    button->setFocused(false);
    button->setHidesLeftBorder(false);
    EXPECT_EQ(layers(), withBorder);
    EXPECT_EQ(button->titleLabel()->layer()->compositingMode(), CompositingMode::SourceOver);
}

}  // namespace
