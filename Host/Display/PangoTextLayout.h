#pragma once

#include <cstdint>
#include <vector>

#include "Host/Display/CairoHandles.h"
#include "Platform/Toolkit/TextEngine.h"

struct _PangoLayout;
struct _PangoLayoutLine;

namespace helmo {

/** Lines of text that can be drawn at any scale. Its lines are as high as the fonts that were asked for,
   whatever fonts other scripts needed, so that rows keep their baselines. Immutable; main thread. */
class PangoTextLayout final : public zornic::TextLayout {
public:
    /** `metrics` are those of the largest font in the text. */
    PangoTextLayout(zornic::TextRequest request, ObjectPointer<_PangoLayout> layout,
                    zornic::FontMetrics metrics);
    ~PangoTextLayout() override;

    zornic::Size size() const override { return _size; }
    double firstBaseline() const override { return _metrics.ascent; }
    double lastBaseline() const override;
    int lineCount() const override { return static_cast<int>(_lines.size()); }
    bool isTruncated() const override { return _truncated; }

    /** Never used again for another layout. */
    std::uint64_t identity() const { return _identity; }
    /** Around all that is drawn, seen from the top left, in points. */
    const zornic::Rect& inkBounds() const { return _ink; }
    /** Whether every letter is in the colour that it is drawn with: neither emoji nor runs of another. */
    bool isOneColor() const { return _isOneColor; }
    /** Draws with the context's source, the top left at the origin, in points. */
    void show(cairo_t* context) const;
    /** Memory that it takes, about, in bytes. */
    std::size_t cost() const;

private:
    struct Line {
        _PangoLayoutLine* line;  // the layout's
        double x;
    };
    double baseline(std::size_t line) const {
        return _metrics.ascent + static_cast<double>(line) * _metrics.lineHeight;
    }

    const std::uint64_t _identity;
    const ObjectPointer<_PangoLayout> _layout;
    const zornic::FontMetrics _metrics;
    std::vector<Line> _lines;
    zornic::Size _size;
    zornic::Rect _ink;
    bool _truncated = false;
    bool _isOneColor = true;
};

}  // namespace helmo
