#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Host/Display/CairoHandles.h"
#include "Platform/Toolkit/TextEngine.h"

struct _PangoGlyphItem;
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
    zornic::Rect inkBounds() const override { return _ink; }

    /** Never used again for another layout. */
    std::uint64_t identity() const { return _identity; }
    /** Draws with the context's source, the top left at the origin, in points. */
    void show(cairo_t* context) const;

    /** What is drawn in one colour: that of the text, or one that runs have of their own. */
    struct Part {
        std::optional<zornic::Color> color;
        /** As the whole's. */
        zornic::Rect ink;
    };
    /** All of it; none where letters or grounds have more than one colour each, as emoji have. */
    const std::vector<Part>& parts() const { return _parts; }
    /** Draws one of the parts, whatever its colour, with the context's source. */
    void show(cairo_t* context, const Part& part) const;
    /** Memory that it takes, about, in bytes. */
    std::size_t cost() const;

private:
    struct Line {
        _PangoLayoutLine* line;  // the layout's
        double x;
    };
    /** Glyphs that belong to one part. */
    struct Piece {
        _PangoGlyphItem* glyphs;  // the layout's
        double x, baseline;
        std::size_t part;
    };
    void divideIntoParts();
    std::size_t partOf(const std::optional<zornic::Color>& color);
    double baseline(std::size_t line) const {
        return _metrics.ascent + static_cast<double>(line) * _metrics.lineHeight;
    }

    const std::uint64_t _identity;
    const ObjectPointer<_PangoLayout> _layout;
    const zornic::FontMetrics _metrics;
    std::vector<Line> _lines;
    std::vector<Piece> _pieces;
    std::vector<Part> _parts;
    zornic::Size _size;
    zornic::Rect _ink;
    bool _truncated = false;
};

}  // namespace helmo
