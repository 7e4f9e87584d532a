#include "Host/Display/PangoTextLayout.h"

#include <algorithm>
#include <hb-ot.h>

#include <pango/pangocairo.h>

namespace helmo {

namespace {

/** Layouts are made on the main thread only. */
std::uint64_t nextIdentity() {
    static std::uint64_t last = 0;
    return ++last;
}

zornic::Rect inPoints(const PangoRectangle& rect) {
    return {pango_units_to_double(rect.x), pango_units_to_double(rect.y), pango_units_to_double(rect.width),
            pango_units_to_double(rect.height)};
}

/** Pango raises and lowers runs to the baseline that the first run's script would like: Latin after Japanese
   by almost a point. All rows share one baseline here. */
void putOnOneBaseline(PangoLayout* layout) {
    for (GSList* line = pango_layout_get_lines(layout); line; line = line->next)
        for (GSList* run = static_cast<PangoLayoutLine*>(line->data)->runs; run; run = run->next)
            static_cast<PangoGlyphItem*>(run->data)->y_offset = 0;
}

/** Whether letters of the font have more than one colour. */
bool hasColors(PangoFont* font) {
    hb_font_t* const shapes = font ? pango_font_get_hb_font(font) : nullptr;
    if (!shapes) return true;
    hb_face_t* const face = hb_font_get_face(shapes);
    return hb_ot_color_has_png(face) || hb_ot_color_has_layers(face) || hb_ot_color_has_svg(face);
}

/** The attributes of the run that holds a byte of the text. */
const zornic::TextAttributes* attributesAt(const zornic::StyledText& text, std::size_t byte) {
    for (const auto& run : text.runs()) {
        if (byte < run.text.size()) return &run.attributes;
        byte -= run.text.size();
    }
    return nullptr;
}

}  // namespace

PangoTextLayout::PangoTextLayout(zornic::TextRequest request, ObjectPointer<_PangoLayout> layout,
                                 zornic::FontMetrics metrics)
    : TextLayout(std::move(request)),
      _identity(nextIdentity()),
      _layout(std::move(layout)),
      _metrics(metrics) {
    if (*pango_layout_get_text(_layout.get()) == '\0') return;
    putOnOneBaseline(_layout.get());
    PangoLayoutIter* const iterator = pango_layout_get_iter(_layout.get());
    do {
        PangoRectangle ink, logical;
        pango_layout_iter_get_line_extents(iterator, &ink, &logical);
        const double top = pango_units_to_double(pango_layout_iter_get_baseline(iterator));
        _ink = _ink.united(inPoints(ink).offset({0, baseline(_lines.size()) - top}));
        _size.width = std::max(_size.width, pango_units_to_double(logical.width));
        _lines.push_back({pango_layout_iter_get_line_readonly(iterator), pango_units_to_double(logical.x)});
    } while (pango_layout_iter_next_line(iterator));
    pango_layout_iter_free(iterator);
    _size.height = static_cast<double>(_lines.size()) * _metrics.lineHeight;
    _truncated = pango_layout_is_ellipsized(_layout.get());
    divideIntoParts();
}

PangoTextLayout::~PangoTextLayout() = default;

double PangoTextLayout::lastBaseline() const { return baseline(_lines.empty() ? 0 : _lines.size() - 1); }

void PangoTextLayout::show(cairo_t* context) const {
    for (std::size_t i = 0; i < _lines.size(); ++i) {
        cairo_move_to(context, _lines[i].x, baseline(i));
        pango_cairo_show_layout_line(context, _lines[i].line);
    }
}

void PangoTextLayout::divideIntoParts() {
    for (std::size_t line = 0; line < _lines.size(); ++line) {
        double x = _lines[line].x;
        for (const GSList* run = _lines[line].line->runs; run; run = run->next) {
            auto* const item = static_cast<PangoGlyphItem*>(run->data);
            const auto* const attributes =
                attributesAt(request().text, static_cast<std::size_t>(item->item->offset));
            PangoFont* const font = item->item->analysis.font;
            if (hasColors(font) || (attributes && attributes->backgroundColor)) {
                _parts.clear();
                _pieces.clear();
                return;
            }
            PangoRectangle ink, logical;
            pango_glyph_string_extents(item->glyphs, font, &ink, &logical);
            if (ink.width > 0) {  // a blank between two colours is no part
                const auto part = partOf(attributes ? attributes->color : std::nullopt);
                _pieces.push_back({item, x, baseline(line), part});
                _parts[part].ink = _parts[part].ink.united(inPoints(ink).offset({x, baseline(line)}));
            }
            x += pango_units_to_double(logical.width);
        }
    }
}

std::size_t PangoTextLayout::partOf(const std::optional<zornic::Color>& color) {
    const auto at = std::ranges::find(_parts, color, &Part::color) - _parts.begin();
    if (at == std::ssize(_parts)) _parts.push_back({color, {}});
    return static_cast<std::size_t>(at);
}

void PangoTextLayout::show(cairo_t* context, const Part& part) const {
    const auto wanted = static_cast<std::size_t>(&part - _parts.data());
    for (const Piece& piece : _pieces) {
        if (piece.part != wanted) continue;
        cairo_move_to(context, piece.x, piece.baseline);
        pango_cairo_show_glyph_item(context, pango_layout_get_text(_layout.get()), piece.glyphs);
    }
}

std::size_t PangoTextLayout::cost() const {
    // Glyphs, break positions and items, besides the text itself.
    constexpr std::size_t fixed = 2048, eachByte = 48;
    std::size_t bytes = 0;
    for (const auto& run : request().text.runs()) bytes += run.text.size();
    return fixed + eachByte * bytes;
}

}  // namespace helmo
