#include <cmath>
#include <cstdint>
#include <cstring>

#include "Host/Display/CairoCanvas.h"
#include "Host/Display/HostImageLoader.h"
#include "Host/Display/PangoTextEngine.h"

namespace helmo {
namespace {

using zornic::Color;
using zornic::ColorFilter;
using zornic::ColorFilterType;
using zornic::CompositingMode;
using zornic::Image;
using zornic::Rect;

const std::vector<ColorFilter> backdropFilters{{ColorFilterType::Saturate, 1.592},
                                               {ColorFilterType::Brightness, -2.5},
                                               {ColorFilterType::Contrast, 0.12}};

/** A display of 60 x 60 pixels. */
struct Board {
    explicit Board(double scale) : canvas(context.get(), scale, cache) {}
    /** ARGB, premultiplied. */
    std::uint32_t pixel(int x, int y) const {
        std::uint32_t value;
        std::memcpy(&value, surface.pixels() + y * surface.stride() + x * 4, 4);
        return value;
    }
    Surface surface{60, 60};
    CairoPointer<cairo_t> context = makeContext(surface);
    RenderCache cache;
    CairoCanvas canvas;
};

/** One colour, and a count of how often it was scaled. */
struct CountingSource : CairoImageSource {
    zornic::Size size() const override { return {10, 10}; }
    double scale() const override { return 1; }
    std::size_t cost() const override { return 0; }
    Surface rendered(int width, int height) const override {
        ++renderings;
        Surface result(width, height);
        const auto context = makeContext(result);
        cairo_set_source_rgb(context.get(), color.red, color.green, color.blue);
        cairo_paint(context.get());
        return result;
    }
    Color color = Color::whiteColor();
    mutable int renderings = 0;
};

TEST(CairoCanvasTest, HairlinesAreOneWholePixelAndNeighboursMeetAtEveryScale) {
    for (const double scale : {1.0, 1.5, 2.0})
        for (double y = 1; y < 20; y += 0.37) {
            Board board(scale);
            board.canvas.fillRect({0, y, 20, 1 / scale}, Color::whiteColor());
            int white = 0, other = 0;
            for (int row = 0; row < 60; ++row) {
                white += board.pixel(5, row) == 0xFFFFFFFF;
                other += board.pixel(5, row) != 0xFFFFFFFF && board.pixel(5, row) != 0;
            }
            EXPECT_EQ(white, 1) << scale << " " << y;
            EXPECT_EQ(other, 0) << scale << " " << y;

            board.canvas.fillRect({0, 0, 20, y}, Color::rgb(0xFF0000));
            board.canvas.fillRect({0, y, 20, 9.3}, Color::rgb(0x00FF00));
            const int last = static_cast<int>(std::round((y + 9.3) * scale));
            for (int row = 0; row < last; ++row)
                EXPECT_TRUE(board.pixel(5, row) == 0xFFFF0000 || board.pixel(5, row) == 0xFF00FF00);
        }
}

TEST(CairoCanvasTest, TemplatesAndFlattenedImagesKeepShapeAndTakeTheColor) {
    HostImageLoader loader;
    const Image half(loader.sourceByDrawing({10, 10}, false, 1, [](zornic::Canvas& canvas) {
        canvas.fillRect({0, 0, 5, 10}, Color::rgb(0x123456));
    }));
    Board board(2);
    const Color teal = Color::rgb(0x3CC9BC);
    board.canvas.drawImage(half, {0, 0, 10, 10}, teal);
    board.canvas.drawImage(half.withRenderingMode(zornic::ImageRenderingMode::AlwaysTemplate),
                           {10, 0, 10, 10}, teal);
    board.canvas.drawImage(half.flattenedWithColor(Color::rgb(0xFF0000)), {20, 0, 10, 10}, teal);
    EXPECT_EQ(board.pixel(4, 10), 0xFF123456);
    EXPECT_EQ(board.pixel(24, 10), 0xFF3CC9BC);
    EXPECT_EQ(board.pixel(44, 10), 0xFFFF0000);
    for (const int x : {14, 34, 54}) EXPECT_EQ(board.pixel(x, 10), 0U) << x;
}

TEST(CairoCanvasTest, CapsKeepTheirSizeWhileTheMiddleGrows) {
    HostImageLoader loader;
    const auto source = loader.sourceByDrawing({9, 9}, false, 2, [](zornic::Canvas& canvas) {
        canvas.fillRect({0, 0, 4, 9}, Color::rgb(0xFF0000));
        canvas.fillRect({4, 0, 1, 9}, Color::rgb(0x00FF00));
        canvas.fillRect({5, 0, 4, 9}, Color::rgb(0x0000FF));
    });
    Board board(2);
    const auto button = Image(source).resizableWithCapInsets({0, 4, 0, 4});
    board.canvas.drawImage(button, {0, 0, 30, 9}, {});
    board.canvas.drawImage(button, {0, 15, 4, 9}, {});  // narrower than its caps
    const auto expectColor = [&](int from, int to, int y, std::uint32_t color) {
        for (int x = from; x < to; ++x) EXPECT_EQ(board.pixel(x, y), color) << x << "," << y;
    };
    expectColor(0, 8, 9, 0xFFFF0000);
    expectColor(8, 52, 9, 0xFF00FF00);
    expectColor(52, 60, 9, 0xFF0000FF);
    EXPECT_EQ(board.pixel(0, 40), 0xFFFF0000);
    EXPECT_EQ(board.pixel(7, 40), 0xFF0000FF);
}

TEST(CairoCanvasTest, DestinationOutCutsAHoleIntoItsGroupOnly) {
    PangoTextEngine engine;
    Board board(1);
    board.canvas.fillRect({0, 0, 60, 60}, Color::rgb(0x15171A));
    board.canvas.beginGroup({0, 0, 60, 60});
    board.canvas.fillRect({0, 0, 60, 60}, Color::rgb(0x3CC9BC));
    board.canvas.beginGroup({10, 10, 20, 20});
    board.canvas.fillRect({10, 10, 20, 20}, Color::whiteColor());
    board.canvas.endGroup(1, {}, CompositingMode::DestinationOut);
    board.canvas.beginGroup({0, 30, 60, 30});
    board.canvas.drawText(*engine.layout({zornic::StyledText("\u2588"), {30}}), {30, 25},
                          Color::whiteColor());
    board.canvas.endGroup(1, {}, CompositingMode::DestinationOut);
    board.canvas.endGroup(1, {}, CompositingMode::SourceOver);
    EXPECT_EQ(board.pixel(5, 5), 0xFF3CC9BC);
    EXPECT_EQ(board.pixel(20, 20), 0xFF15171A);
    EXPECT_EQ(board.pixel(40, 45), 0xFF15171A) << "the glyph lets the row's ground through";
}

TEST(CairoCanvasTest, FiltersWorkInSequenceWithoutClampingBetween) {
    const auto expected = [](double component, double luminance) {
        const double value = (luminance + (component - luminance) * 1.592 - 2.5 - 0.5) * 0.12 + 0.5;
        return static_cast<int>(std::lround(value * 255));
    };
    for (const auto color :
         {Color::blackColor(), Color::whiteColor(), Color::rgb(0x3070C0), Color::rgb(0xFF0000)}) {
        const double luminance = 0.2126 * color.red + 0.7152 * color.green + 0.0722 * color.blue;
        const auto source = std::make_shared<CountingSource>();
        source->color = color;
        Board board(1);
        board.canvas.beginGroup({0, 0, 20, 20});  // a picture alone
        board.canvas.drawImage(Image(source), {0, 0, 20, 20}, {});
        board.canvas.endGroup(1, backdropFilters, CompositingMode::SourceOver);
        board.canvas.beginGroup({20, 0, 20, 20});  // whatever else
        board.canvas.fillRect({20, 0, 20, 20}, color);
        board.canvas.endGroup(1, backdropFilters, CompositingMode::SourceOver);
        for (const int x : {10, 30}) {
            const auto pixel = board.pixel(x, 10);
            EXPECT_NEAR(static_cast<int>(pixel >> 16 & 255), expected(color.red, luminance), 1);
            EXPECT_NEAR(static_cast<int>(pixel >> 8 & 255), expected(color.green, luminance), 1);
            EXPECT_NEAR(static_cast<int>(pixel & 255), expected(color.blue, luminance), 1);
        }
    }
}

TEST(CairoCanvasTest, GroupsBlendAsOneWhateverHappensInThem) {
    const Image white(std::make_shared<CountingSource>());
    Board board(1);
    board.canvas.fillRect({0, 0, 60, 60}, Color::blackColor());
    // Moves and clips before the first image, and a second image, which needs the group's own pixels after
    // all.
    board.canvas.beginGroup({0, 0, 40, 40});
    board.canvas.translate({5, 5});
    board.canvas.save();
    board.canvas.translate({5, 5});
    board.canvas.clip({0, 0, 10, 10});
    board.canvas.drawImage(white, {0, 0, 20, 20}, {});
    board.canvas.drawImage(white, {0, 0, 20, 20}, {});
    board.canvas.restore();
    board.canvas.fillRect({20, 20, 10, 10}, Color::whiteColor());
    board.canvas.endGroup(0.5, {}, CompositingMode::SourceOver);
    EXPECT_EQ(board.pixel(15, 15) & 255, 128U);
    EXPECT_EQ(board.pixel(22, 22), 0xFF000000) << "clipped";
    EXPECT_EQ(board.pixel(30, 30) & 255, 128U);
    // One image alone, and nothing left over from the group's moves.
    board.canvas.beginGroup({40, 40, 20, 20});
    board.canvas.save();
    board.canvas.translate({40, 40});
    board.canvas.drawImage(white, {0, 0, 10, 10}, {});
    board.canvas.restore();
    board.canvas.endGroup(0.25, {}, CompositingMode::SourceOver);
    EXPECT_EQ(board.pixel(45, 45) & 255, 64U);
    board.canvas.fillRect({50, 50, 2, 2}, Color::whiteColor());
    EXPECT_EQ(board.pixel(51, 51), 0xFFFFFFFF);
}

TEST(CairoCanvasTest, NoFrameScalesOrFiltersTheSamePictureAgain) {
    const auto source = std::make_shared<CountingSource>();
    Board board(1.5);
    for (int frame = 0; frame < 5; ++frame) {
        board.canvas.drawImage(Image(source), {frame * 0.7, 3, 20, 20}, {});
        board.canvas.beginGroup({0, 0, 30, 30});
        board.canvas.drawImage(Image(source), {0, 0, 30, 30}, {});
        board.canvas.endGroup(1, backdropFilters, CompositingMode::SourceOver);
        board.canvas.drawImage(Image(source), {500, 500, 30, 30}, {});  // out of sight
    }
    EXPECT_EQ(source->renderings, 2);
}

TEST(CairoCanvasTest, RunsOfATextKeepTheirColorsAndTheRestTakesTheGivenOne) {
    PangoTextEngine engine;
    const auto red = Color::rgb(0xFF0000), blue = Color::rgb(0x0000FF), green = Color::rgb(0x00FF00);
    struct Case {
        const char *first, *second;
        bool isReversed, hasGround;
    };
    for (const auto& [first, second, isReversed, hasGround] :
         {Case{"MM", "WW", false, false}, Case{"שש", "אא", true, false}, Case{"MM", "WW", false, true}}) {
        zornic::StyledText text(first);
        text.append(second, {{}, red, hasGround ? std::optional(blue) : std::nullopt});
        const auto layout = engine.layout({text, {14, zornic::FontWeight::Regular}});
        for (const double scale : {1.0, 1.5}) {
            Board board(scale);
            for (const double x : {2.0, 2.0}) board.canvas.drawText(*layout, {x, 4}, green);  // kept, too
            const int middle = static_cast<int>((2 + layout->size().width / 2) * scale);
            int wrongSide = 0, greens = 0, reds = 0, blues = 0;
            for (int y = 0; y < 60; ++y)
                for (int x = 0; x < 60; ++x) {
                    const auto pixel = board.pixel(x, y);
                    const bool isGreen = (pixel & 0xFF00) > 0x8000, isRed = (pixel & 0xFF0000) > 0x800000;
                    greens += isGreen;
                    reds += isRed;
                    blues += (pixel & 0xFF) > 0x80;
                    const bool isLeft = x<middle - 4, isRight = x> middle + 4;
                    wrongSide += isReversed ? (isLeft && isGreen) || (isRight && isRed)
                                            : (isLeft && isRed) || (isRight && isGreen);
                }
            EXPECT_GT(greens, 20) << first;
            EXPECT_GT(reds, 20) << first;
            EXPECT_EQ(blues > 20, hasGround) << first;
            EXPECT_EQ(wrongSide, 0) << first << " " << scale;
        }
    }
}

}  // namespace
}  // namespace helmo
