#include <cmath>
#include <limits>

#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNStrings.h"
#include "Utilities/ZRNViews.h"
#include "Views/ZRNButton.h"

namespace zornic {
namespace {

class UtilitiesTest : public testing::Test, protected ScreenFixture {};

class CountingButton final : public ZRNButton {
public:
    using ZRNButton::ZRNButton;
    void setCharge(float charge) override {
        ZRNButton::setCharge(charge);
        ++charges;
    }
    int charges = 0;
};

TEST_F(UtilitiesTest, TimesAreRoundedUpToWholeSeconds) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<std::pair<double, std::string>> cases = {
        {0, "0:00"},
        {59.2, "1:00"},
        {187, "3:07"},
        {3599, "59:59"},
        {3599.4, "1:00:00"},
        {3765, "1:02:45"},
        {-75, "-1:15"},
        {-0.5, "0:00"},
        {-42.9, "-0:42"},
        {std::nan(""), "0:00"},
        {infinity, "596523:14:07"},
        {-infinity, "-596523:14:08"},
        // In single precision, this second is not to be told from the next even one.
        {16777217, "4660:20:16"},
    };
    for (const auto& [seconds, text] : cases) EXPECT_EQ(ZRNTimeStringForDuration(seconds), text) << seconds;
}

TEST_F(UtilitiesTest, AlbumSummariesNameMinutesFromTheFirstOn) {
    EXPECT_EQ(ZRNAlbumDetailFormat(0, 47), "No songs");
    EXPECT_EQ(ZRNAlbumDetailFormat(1, 0), "#1# song");
    EXPECT_EQ(ZRNAlbumDetailFormat(12, 47), "#12# songs, #47# min");
    EXPECT_EQ(ZRNAlbumDetailFormat(12, -1), "#12# songs");
    EXPECT_EQ(ZRNPlainTextOfTemplate(ZRNAlbumDetailFormat(1, 3)), "1 song, 3 min");
    EXPECT_EQ(_ZRNStringFromIndexPath({0, 3, 2}), "0.3.2");
    EXPECT_EQ(_ZRNStringFromIndexPath({7}), "7");
    EXPECT_EQ(_ZRNStringFromIndexPath({}), "");
}

TEST_F(UtilitiesTest, TheKnobWinsOverTouch) {
    struct Case {
        std::int64_t models, touchLevel, mode;
    };
    for (const auto& [models, touchLevel, mode] :
         {Case{3, 0, 2}, Case{2, 0, 2}, Case{1, 0, 0}, Case{1, 2, 1}, Case{0, 2, 0}}) {
        screen->setIntegerCapability(ScreenCapability::InteractionModels, models);
        screen->setIntegerCapability(ScreenCapability::TouchLevels, touchLevel);
        EXPECT_EQ(ZRNHelmoUIMode(), mode) << models << ", " << touchLevel;
    }
    Screen::setCarScreen(nullptr);
    EXPECT_EQ(ZRNHelmoUIMode(), ZRNHelmoUIModeHiTouch);
}

TEST_F(UtilitiesTest, OnlyComposedControlsAreCharged) {
    const auto tree = make<View>();
    const auto composed = make<CountingButton>(ButtonType::Custom),
               bare = make<CountingButton>(ButtonType::Custom);
    tree->addSubview(composed);
    composed->addSubview(bare);
    for (const auto& own : std::vector(bare->subviews())) own->removeFromSuperview();
    ASSERT_GE(composed->subviews().size(), 2U);

    ZRNSetChargeOnDescendantsOfView<ZRNButton>(tree, -0.9F);
    EXPECT_FLOAT_EQ(composed->charge(), -0.9F);
    EXPECT_EQ(composed->charges, static_cast<int>(composed->subviews().size())) << "once for each subview";
    EXPECT_EQ(bare->charges, 0);
    EXPECT_EQ(tree->charge(), 0);
}

}  // namespace
}  // namespace zornic
