#include <chrono>

#include "Host/Display/PangoTextEngine.h"

namespace helmo {
namespace {

using zornic::Font;
using zornic::LineBreakMode;
using zornic::StyledText;
using zornic::TextAlignment;
using zornic::TextRequest;

class PangoTextEngineTest : public testing::Test {
protected:
    const PangoTextLayout& layout(TextRequest request) {
        kept.push_back(engine.layout(request));
        return dynamic_cast<const PangoTextLayout&>(*kept.back());
    }
    double width(const std::string& text, Font font = {}) {
        return layout({StyledText(text), font}).size().width;
    }
    PangoTextEngine engine;
    std::vector<std::shared_ptr<const zornic::TextLayout>> kept;
};

TEST_F(PangoTextEngineTest, WeightsDifferAndFiguresDoNotDance) {
    const std::string text = "Late Night Drive";
    EXPECT_LT(width(text, Font::thinSystemFont(32)), width(text, Font::systemFont(32)));
    EXPECT_LT(width(text, Font::systemFont(32)), width(text, Font::boldSystemFont(32)));
    for (const auto font : {Font::thinSystemFont(13), Font::systemFont(13), Font::boldSystemFont(13)})
        for (const char* const time : {"1:11", "0:47", "8:20"})
            EXPECT_NEAR(width(time, font), width("0:00", font), 0.05) << time;
    EXPECT_NEAR(width(text, {34}), 2 * width(text, {17}), 0.1) << "layouts scale";
}

TEST_F(PangoTextEngineTest, WhatDoesNotFitEndsInAnEllipsisWithinItsRoom) {
    const std::string text = "The Unbearable Lightness of a Very Long Song Title";
    const double whole = width(text);
    for (const auto mode : {LineBreakMode::TruncatingHead, LineBreakMode::TruncatingMiddle,
                            LineBreakMode::TruncatingTail, LineBreakMode::WordWrapping}) {
        const auto& cut = layout({StyledText(text), {}, 200, 1, mode});
        EXPECT_TRUE(cut.isTruncated());
        EXPECT_EQ(cut.lineCount(), 1);
        EXPECT_LE(cut.inkBounds().maxX(), 200);
    }
    EXPECT_FALSE(layout({StyledText(text), {}, whole, 1}).isTruncated()) << "its own width is enough";
    const auto& clipped = layout({StyledText(text), {}, 200, 1, LineBreakMode::Clipping});
    EXPECT_FALSE(clipped.isTruncated());
    EXPECT_LE(clipped.inkBounds().maxX(), 200);
    EXPECT_GT(clipped.inkBounds().maxX(), 180);
    EXPECT_FALSE(layout({StyledText(text), {}, 0, 1}).inkBounds().maxX() > 30) << "no room at all";
}

TEST_F(PangoTextEngineTest, LinesWrapBreakAndStopAtTheirNumber) {
    const std::string text = "one two three four five six seven eight nine ten";
    const auto& free = layout({StyledText(text), {}, 120, 0});
    EXPECT_GT(free.lineCount(), 2);
    EXPECT_FALSE(free.isTruncated());
    const auto& two = layout({StyledText(text), {}, 120, 2});
    EXPECT_EQ(two.lineCount(), 2);
    EXPECT_TRUE(two.isTruncated());
    EXPECT_DOUBLE_EQ(two.size().height, 2 * engine.metrics({}).lineHeight);
    EXPECT_DOUBLE_EQ(two.lastBaseline() - two.firstBaseline(), engine.metrics({}).lineHeight);
    EXPECT_EQ(layout({StyledText("a\nb\nc"), {}, 120, 0}).lineCount(), 3);
    EXPECT_EQ(layout({StyledText("a\nb\nc"), {}, 120, 2}).lineCount(), 2);
    EXPECT_EQ(layout({StyledText("a\nb\rc"), {}}).lineCount(), 1) << "a tag may hold line breaks";
    EXPECT_EQ(layout({StyledText(""), {}}).lineCount(), 0);
}

TEST_F(PangoTextEngineTest, RightToLeftTextIsAlignedByItsOwnDirection) {
    const auto left = [this](const char* text, TextAlignment alignment) {
        return layout({StyledText(text), {}, 300, 1, LineBreakMode::TruncatingTail, alignment})
            .inkBounds()
            .x();
    };
    const char* const hebrew = "שיר ערש";
    EXPECT_LT(left("Lullaby", TextAlignment::Natural), 5);
    EXPECT_GT(left(hebrew, TextAlignment::Natural), 200);
    EXPECT_LT(left(hebrew, TextAlignment::Left), 5);
    EXPECT_GT(left(hebrew, TextAlignment::Right), 200);
    EXPECT_GT(left("Lullaby", TextAlignment::Right), 200);
    EXPECT_NEAR(left("Lullaby", TextAlignment::Center), (300 - width("Lullaby")) / 2, 3);
}

TEST_F(PangoTextEngineTest, RowsKeepTheirBaselineInEveryScript) {
    const auto& latin = layout({StyledText("Song"), {}});
    for (const char* const text : {"夜の歌", "أغنية", "เพลงรัก", "गीत", "한국어"}) {
        const auto& other = layout({StyledText(text), {}});
        EXPECT_DOUBLE_EQ(other.firstBaseline(), latin.firstBaseline());
        EXPECT_DOUBLE_EQ(other.size().height, latin.size().height);
        EXPECT_GT(other.inkBounds().width(), 0);
    }
    // Also within a line, behind a script that would rather hang or stand lower: the stroke of 一 is halfway
    // up.
    const auto depth = [this](const std::string& text) {
        const auto& line = layout({StyledText(text), {}});
        return line.inkBounds().maxY() - line.firstBaseline();
    };
    for (const std::string text : {"H", "ก"}) EXPECT_NEAR(depth("一 " + text), depth(text), 0.05) << text;
}

TEST_F(PangoTextEngineTest, HostileTextIsRepairedAndStaysCheap) {
    EXPECT_DOUBLE_EQ(width("a\xFF\xC3"), width("a\uFFFD\uFFFD"));
    EXPECT_DOUBLE_EQ(width(std::string("a\0b\x1B", 4)), width("a b "));
    std::string endless;
    for (int i = 0; i < 100000; ++i) endless += "\u00E4";
    const auto start = std::chrono::steady_clock::now();
    const auto& cut = layout({StyledText(endless), {}, 300, 1});
    EXPECT_TRUE(cut.isTruncated());
    EXPECT_LE(cut.request().text.plainText().size(), 2 * PangoTextEngine::maxLength);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_EQ(engine.layout({StyledText("again"), {}}), engine.layout({StyledText("again"), {}}));
}

TEST_F(PangoTextEngineTest, RunsHaveTheirOwnFontAndColor) {
    StyledText text("Shuffle ");
    const double plain = layout({text, {}}).size().width;
    text.append("off",
                {Font::boldSystemFont(40), zornic::Color::rgb(0xFF0000), zornic::Color::rgb(0x00FF00)});
    const auto& styled = layout({text, {}});
    EXPECT_NEAR(styled.size().width, plain + width("off", Font::boldSystemFont(40)), 1);
    EXPECT_DOUBLE_EQ(styled.firstBaseline(), engine.metrics(Font::boldSystemFont(40)).ascent);
}

}  // namespace
}  // namespace helmo
