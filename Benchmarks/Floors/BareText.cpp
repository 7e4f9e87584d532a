#include "Benchmarks/Floors/BareText.h"

#include <cmath>

#include <pango/pangocairo.h>

namespace helmo::benchmarks {

BareText::BareText(double size) {
    const ObjectPointer<PangoFontMap> fonts(pango_cairo_font_map_new());
    _context.reset(pango_font_map_create_context(fonts.get()));
    const CairoPointer<cairo_font_options_t> options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(_context.get(), options.get());
    pango_context_set_round_glyph_positions(_context.get(), FALSE);
    PangoFontDescription* const font = pango_font_description_from_string("Inter");
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_context_set_font_description(_context.get(), font);
    pango_font_description_free(font);
}

void BareText::draw(cairo_t* context, const std::string& text, double x, double y) const {
    const ObjectPointer<PangoLayout> layout(pango_layout_new(_context.get()));
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_font_features_new("tnum=1"));
    pango_layout_set_attributes(layout.get(), attributes);
    pango_attr_list_unref(attributes);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    PangoRectangle logical;
    pango_layout_get_extents(layout.get(), nullptr, &logical);
    cairo_set_source_rgb(context, 1, 1, 1);
    cairo_move_to(context, std::round(x - pango_units_to_double(logical.width) / 2), y);
    pango_cairo_show_layout_line(context, pango_layout_get_line_readonly(layout.get(), 0));
}

}  // namespace helmo::benchmarks
