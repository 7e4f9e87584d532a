#include "Platform/Toolkit/FixedWidthTextEngine.h"
#include "Platform/Toolkit/Label.h"
#include "Tests/Support/RecordingCanvas.h"

using namespace zornic;

namespace {

/** Lines of `text` at size 10: five points a letter. */
std::string lines(const std::string& text, double width, int maxLines,
                  LineBreakMode mode = LineBreakMode::TruncatingTail) {
    TextRequest request;
    request.text = StyledText(text);
    request.font = Font::systemFont(10);
    request.maxWidth = width;
    request.maxLines = maxLines;
    request.lineBreakMode = mode;
    FixedWidthTextEngine engine;
    const auto layout = std::dynamic_pointer_cast<const FixedWidthTextLayout>(engine.layout(request));
    std::string shown;
    for (const auto& line : layout->lines()) {
        EXPECT_LE(line.width, std::max(width, 5.0)) << line.text;  // one letter at least
        shown += line.text + "|";
    }
    return shown;
}

RecordingCanvas::DrawnText drawn(Label& label, double scale = 1) {
    RecordingCanvas canvas({0, 0, 800, 480}, scale);
    label.layer()->render(canvas);
    return canvas.texts.empty() ? RecordingCanvas::DrawnText{} : canvas.texts.front();
}

std::shared_ptr<Label> label(const std::string& text, const Rect& frame, double size = 10) {
    auto made = make<Label>(frame);
    made->setFont(Font::systemFont(size));
    made->setText(text);
    return made;
}

}  // namespace

TEST(FixedWidthText, WrapsAtSpacesAndCutsBetweenLetters) {
    EXPECT_EQ(lines("one two three", 40, 0), "one two|three|");
    EXPECT_EQ(lines("one two three", 35, 0), "one two|three|");  // a space at the edge takes no room
    EXPECT_EQ(lines("one\n\ntwo", 400, 0), "one||two|");
    EXPECT_EQ(lines("unbreakable", 25, 0), "unbre|akabl|e|");
    EXPECT_EQ(lines("a b c d e f", 15, 2), "a b|c…|");
    EXPECT_EQ(lines("one\ntwo", 400, 1), "one two|");
    EXPECT_EQ(lines("Größenwahn", 30, 1), "Größe…|");
    EXPECT_EQ(lines("abcdefghij", 25, 1, LineBreakMode::TruncatingHead), "…ghij|");
    EXPECT_EQ(lines("abcdefghij", 25, 1, LineBreakMode::TruncatingMiddle), "ab…ij|");
    EXPECT_EQ(lines("abcdefghij", 25, 1, LineBreakMode::Clipping), "abcde|");
    EXPECT_EQ(lines("abc", 0, 0), "a|b|c|");
    EXPECT_EQ(lines("abc", 0, 1), "…|");
    EXPECT_EQ(lines("", 10, 0), "|");
}

TEST(Label, StandsInTheMiddleOfItsHeightOnWholePixels) {
    const auto shown = label("Title", {100, 50, 200, 30.4});
    EXPECT_EQ(drawn(*shown).firstBaseline, 69);  // 59.2 + 9.5, to the nearest pixel
    EXPECT_EQ(drawn(*shown, 2).firstBaseline, 68.5);
    EXPECT_EQ(drawn(*shown).area.x(), 100);
    shown->setTextAlignment(TextAlignment::Center);
    EXPECT_NEAR(drawn(*shown).area.midX(), 200, 0.1);
    shown->setTextAlignment(TextAlignment::Right);
    EXPECT_NEAR(drawn(*shown).area.maxX(), 300, 0.1);
    EXPECT_NEAR(shown->baselineOffsetFromBottom(), 30.4 - shown->firstBaselineFromTop(), 1e-9);
}

TEST(Label, FitsWhatItShows) {
    const auto shown = label("Some title", {0, 0, 20, 5});
    shown->sizeToFit();
    EXPECT_EQ(shown->frame(), Rect(0, 0, 50, 12));
    EXPECT_FALSE(shown->isTruncated());
    shown->setFrame({0, 0, 30, 5});
    EXPECT_TRUE(shown->isTruncated());
    shown->setNumberOfLines(2);
    shown->sizeToFit();
    EXPECT_EQ(shown->frame(), Rect(0, 0, 25, 24));
    EXPECT_EQ(drawn(*shown).text, "Some\ntitle");
    shown->setText("");
    shown->sizeToFit();
    EXPECT_TRUE(shown->frame().empty());
}

TEST(Label, ShrinksNoFurtherThanAllowedThenTruncates) {
    const auto shown = label("0123456789", {0, 0, 45, 12});
    shown->setAdjustsFontSizeToFitWidth(true);
    shown->setMinimumScaleFactor(0.8);
    EXPECT_EQ(drawn(*shown).text, "0123456789");
    EXPECT_NEAR(drawn(*shown).request->font.size, 9, 0.2);
    shown->setFrame({0, 0, 30, 12});
    EXPECT_TRUE(shown->isTruncated());
    EXPECT_EQ(drawn(*shown).request->font.size, 8);
    shown->setText("0123");
    EXPECT_EQ(drawn(*shown).request->font.size, 10);
}

TEST(Label, OverrideColorReplacesEveryOther) {
    const auto shown = label("", {0, 0, 200, 20});
    StyledText text("E", {std::nullopt, Color::blackColor(), Color::whiteColor()});
    text.append(" Title");
    shown->setStyledText(text);
    EXPECT_EQ(drawn(*shown).request->text, text);
    shown->setOverrideColor(Color::rgb(0x123456));
    EXPECT_EQ(drawn(*shown).color, Color::rgb(0x123456));
    const auto overridden = drawn(*shown);
    for (const auto& run : overridden.request->text.runs()) EXPECT_EQ(run.attributes, TextAttributes{});
    shown->setOverrideColor(std::nullopt);
    EXPECT_EQ(drawn(*shown).request->text, text);
}
