#pragma once

#include "Platform/Toolkit/TextEngine.h"

namespace zornic {

/** Text in lines of code points that are all half as wide as their font's size. */
class FixedWidthTextLayout : public TextLayout {
public:
    struct Line {
        std::string text;
        double width = 0, ascent = 0, descent = 0;
    };
    FixedWidthTextLayout(TextRequest request, std::vector<Line> lines, bool truncated);

    Size size() const override;
    double firstBaseline() const override { return _lines.front().ascent; }
    double lastBaseline() const override { return size().height - _lines.back().descent; }
    int lineCount() const override { return static_cast<int>(_lines.size()); }
    bool isTruncated() const override { return _truncated; }
    Rect inkBounds() const override { return {{}, size()}; }
    /** What each line shows, ellipses included. */
    const std::vector<Line>& lines() const { return _lines; }

private:
    const std::vector<Line> _lines;
    const bool _truncated;
};

/** The engine where none is installed: it draws nothing, but measures alike on every machine. Lines break at
   spaces; ascent 0.95, descent 0.25 of the size. */
class FixedWidthTextEngine : public TextEngine {
public:
    std::shared_ptr<const TextLayout> layout(const TextRequest& request) override;
    FontMetrics metrics(const Font& font) override;
};

}  // namespace zornic
