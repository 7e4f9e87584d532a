#pragma once

#include "Platform/Toolkit/View.h"

namespace zornic {

/** A text that is read, not touched. Main thread. */
class Label : public View {
public:
    explicit Label(const Rect& frame = {});

    /** The plain text, of styled text too. */
    std::string text() const { return _text.plainText(); }
    /** Replaces styled text. */
    void setText(const std::string& text);
    const StyledText& styledText() const { return _text; }
    void setStyledText(StyledText text);
    Font font() const { return _font; }
    void setFont(Font font);
    Color textColor() const { return _textColor; }
    void setTextColor(Color color);
    /** Colour instead of every other while set: of a focused row, of a pressed button. */
    void setOverrideColor(std::optional<Color> color);
    TextAlignment textAlignment() const { return _alignment; }
    void setTextAlignment(TextAlignment alignment);
    /** 0: as many as needed. */
    int numberOfLines() const { return _numberOfLines; }
    void setNumberOfLines(int lines);
    LineBreakMode lineBreakMode() const { return _lineBreakMode; }
    void setLineBreakMode(LineBreakMode mode);
    bool adjustsFontSizeToFitWidth() const { return _adjustsFontSize; }
    void setAdjustsFontSizeToFitWidth(bool adjusts);
    double minimumScaleFactor() const { return _minimumScaleFactor; }
    void setMinimumScaleFactor(double factor);

    Size sizeThatFits(Size size) override;
    bool hasIntrinsicSize() const override { return true; }
    /** From the bottom edge to the last baseline, at the present size. */
    double baselineOffsetFromBottom();
    double firstBaselineFromTop() override;
    double lastBaselineFromBottom() override { return baselineOffsetFromBottom(); }
    /** Whether the text does not fit and ends in an ellipsis. */
    bool isTruncated();
    void drawRect(Canvas& canvas, const Rect& dirty) override;
    std::string accessibilityText() const override { return text(); }
    bool pointInside(Point) const override { return false; }

private:
    /** The layout for a width, shrunk to fit when asked for. */
    std::shared_ptr<const TextLayout> layoutForWidth(double width);
    void changed();

    StyledText _text;
    Font _font;
    Color _textColor = labelDefaultColor();
    std::optional<Color> _overrideColor;
    TextAlignment _alignment = TextAlignment::Natural;
    int _numberOfLines = 1;
    LineBreakMode _lineBreakMode = LineBreakMode::TruncatingTail;
    bool _adjustsFontSize = false;
    double _minimumScaleFactor = 1;
    std::shared_ptr<const TextLayout> _layout;
    double _layoutWidth = -1;
};

}  // namespace zornic
