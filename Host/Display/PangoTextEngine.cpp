#include "Host/Display/PangoTextEngine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <hb.h>
#include <system_error>

#include <pango/pangocairo.h>

#include "Host/Log.h"
#include "Platform/Foundation/TextTools.h"

namespace helmo {

using zornic::Font;
using zornic::FontWeight;
using zornic::LineBreakMode;
using zornic::TextAlignment;
using zornic::TextRequest;

namespace {

constexpr std::size_t layoutLimit = 8 << 20;  // bytes
/** Widths beyond this, in points, are none: Pango counts in 1/1024 of a point. */
constexpr double widestLayout = 100000;

/** A letter as texts lay it out: the font that it is set in is the one that they open, and is opened once. */
class Letter {
public:
    Letter(PangoContext* context, const PangoFontDescription* font) : _layout(pango_layout_new(context)) {
        pango_layout_set_font_description(_layout.get(), font);
        pango_layout_set_text(_layout.get(), "x", 1);
        const GSList* const runs = pango_layout_get_line_readonly(_layout.get(), 0)->runs;
        if (runs) _analysis = &static_cast<const PangoGlyphItem*>(runs->data)->item->analysis;
    }
    /** None where nothing could be opened. */
    PangoFont* font() const { return _analysis ? _analysis->font : nullptr; }
    double inkHeight() const {
        PangoRectangle ink;
        pango_layout_get_extents(_layout.get(), &ink, nullptr);
        return pango_units_to_double(ink.height);
    }

private:
    const ObjectPointer<PangoLayout> _layout;
    const PangoAnalysis* _analysis = nullptr;
};

/** The name of the font that is opened when `family` is wanted. */
std::string openedFamily(PangoContext* context, const char* family) {
    PangoFontDescription* const wanted = pango_font_description_new();
    pango_font_description_set_family(wanted, family);
    pango_font_description_set_weight(wanted, PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(wanted, Font().size * PANGO_SCALE);  // needed anyhow
    const Letter letter(context, wanted);
    pango_font_description_free(wanted);
    if (!letter.font()) return {};
    PangoFontDescription* const opened = pango_font_describe(letter.font());
    const char* const name = pango_font_description_get_family(opened);
    std::string result = name ? name : "";
    pango_font_description_free(opened);
    return result;
}

/** The family goes by another name where it is installed as one variable file. Asked for by name: a list of
   all families would read every font of the system. */
std::string installedFamily(PangoContext* context) {
    for (const char* const wanted : {"Inter", "Inter Variable", "Inter V"})
        if (g_ascii_strcasecmp(openedFamily(context, wanted).c_str(), wanted) == 0) return wanted;
    return {};
}

PangoWeight pangoWeight(FontWeight weight) {
    switch (weight) {
        // A hair thinner, and the strokes of a title are less than a pixel at scale 1: grey instead of white.
        case FontWeight::Thin:
            return PANGO_WEIGHT_ULTRALIGHT;
        case FontWeight::Regular:
            return PANGO_WEIGHT_NORMAL;
        case FontWeight::Bold:
            return PANGO_WEIGHT_BOLD;
    }
    return PANGO_WEIGHT_NORMAL;
}

bool isBreak(char32_t character) {
    return character == U'\n' || character == U'\r' || character == U'\x2028' || character == U'\x2029';
}

/** Whole characters only, no control characters, and breaks only where there may be lines. Stops at `room`
   code points, which it counts down. */
std::string cleaned(const std::string& text, std::size_t& room, bool mayBreak) {
    // Four bytes a code point at most, so that an endless text is not even read to its end.
    auto characters = zornic::decodedUtf8(std::string_view(text).substr(0, room * 4));
    characters.resize(std::min(characters.size(), room));
    room -= characters.size();
    for (auto& character : characters) {
        if (isBreak(character))
            character = mayBreak ? U'\n' : U' ';
        else if (character < 0x20 || (character >= 0x7F && character < 0xA0))
            character = U' ';
    }
    return zornic::encodedUtf8(characters);
}

/** Most texts: nothing in them can need cleaning, whatever a reader of UTF-8 would make of it. */
bool isPlain(const TextRequest& request) {
    std::size_t length = 0;
    return std::ranges::all_of(request.text.runs(), [&](const auto& run) {
        length += run.text.size();
        return length <= PangoTextEngine::maxLength &&
               std::ranges::all_of(run.text, [](char byte) { return byte >= 0x20 && byte < 0x7F; });
    });
}

TextRequest cleaned(const TextRequest& request) {
    TextRequest result = request;
    result.text = {};
    result.text.lineBreakMode = request.text.lineBreakMode;
    std::size_t room = PangoTextEngine::maxLength;
    for (const auto& run : request.text.runs())
        if (room > 0) result.text.append(cleaned(run.text, room, request.maxLines != 1), run.attributes);
    return result;
}

void insert(PangoAttrList* list, PangoAttribute* attribute, std::size_t from, std::size_t to) {
    attribute->start_index = static_cast<guint>(from);
    attribute->end_index = static_cast<guint>(to);
    pango_attr_list_insert(list, attribute);
}

guint16 pangoComponent(double component) {
    return static_cast<guint16>(std::lround(std::clamp(component, 0.0, 1.0) * 65535));
}

LineBreakMode breakMode(const TextRequest& request) {
    return request.text.lineBreakMode.value_or(request.lineBreakMode);
}

PangoEllipsizeMode ellipsizeMode(const TextRequest& request) {
    if (request.maxLines <= 0) return PANGO_ELLIPSIZE_NONE;
    switch (breakMode(request)) {
        case LineBreakMode::Clipping:
            return PANGO_ELLIPSIZE_NONE;
        case LineBreakMode::TruncatingHead:
            return PANGO_ELLIPSIZE_START;
        case LineBreakMode::TruncatingMiddle:
            return PANGO_ELLIPSIZE_MIDDLE;
        // Words that don't fit must show that they are missing, too.
        case LineBreakMode::WordWrapping:
        case LineBreakMode::TruncatingTail:
            return PANGO_ELLIPSIZE_END;
    }
    return PANGO_ELLIPSIZE_END;
}

/** Pango turns left and right around for a right-to-left text; only natural alignment wants that. */
PangoAlignment pangoAlignment(TextAlignment alignment, PangoLayout* layout) {
    // Asked for only where it matters: it lays the text out, once more than is needed.
    const auto isTurned = [layout] { return pango_layout_get_direction(layout, 0) == PANGO_DIRECTION_RTL; };
    switch (alignment) {
        case TextAlignment::Center:
            return PANGO_ALIGN_CENTER;
        case TextAlignment::Left:
            return isTurned() ? PANGO_ALIGN_RIGHT : PANGO_ALIGN_LEFT;
        case TextAlignment::Right:
            return isTurned() ? PANGO_ALIGN_LEFT : PANGO_ALIGN_RIGHT;
        case TextAlignment::Natural:
            return PANGO_ALIGN_LEFT;
    }
    return PANGO_ALIGN_LEFT;
}

/** Brings a layout that has more lines than it may down to them. */
void limitLines(PangoLayout* layout, const TextRequest& request, std::string text) {
    if (request.maxLines <= 0) return;
    if (breakMode(request) == LineBreakMode::Clipping) {
        if (PangoLayoutLine* const beyond = pango_layout_get_line_readonly(layout, request.maxLines))
            pango_layout_set_text(layout, text.data(), beyond->start_index);
        return;
    }
    // Pango counts lines by paragraph: join the last ones until the ellipsis covers them all.
    while (pango_layout_get_line_count(layout) > request.maxLines) {
        const auto last = text.rfind('\n');
        if (last == std::string::npos) return;
        text[last] = ' ';
        pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    }
}

}  // namespace

PangoTextEngine::PangoTextEngine() : _layouts(layoutLimit) {
    const ObjectPointer<PangoFontMap> fonts(pango_cairo_font_map_new());
    _context.reset(pango_font_map_create_context(fonts.get()));
    const CairoPointer<cairo_font_options_t> options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(_context.get(), options.get());
    pango_context_set_round_glyph_positions(_context.get(), FALSE);
    try {
        _opening = std::async(std::launch::async, [this] { openFonts(); });
    } catch (const std::system_error&) {
        openFonts();
    }
}

PangoTextEngine::~PangoTextEngine() { waitForFonts(); }

void PangoTextEngine::openFonts() {
    _family = installedFamily(_context.get());
    if (_family.empty()) {
        _family = "sans";
        logLine("The font family Inter is not installed; texts are shown in the system's sans.");
    }
    for (const double size : {17, 13, 11}) knownMetrics(Font::systemFont(size));
    for (const double size : {13, 11}) knownMetrics(Font::boldSystemFont(size));
}

void PangoTextEngine::waitForFonts() {
    if (_opening.valid()) _opening.get();
}

const std::string& PangoTextEngine::family() {
    waitForFonts();
    return _family;
}

std::size_t PangoTextEngine::RequestHash::operator()(const TextRequest& request) const {
    std::size_t hash = std::hash<double>()(request.maxWidth) + static_cast<std::size_t>(request.maxLines);
    hash = hash * 31 + std::hash<double>()(request.font.size) + static_cast<std::size_t>(request.font.weight);
    for (const auto& run : request.text.runs()) hash = hash * 31 + std::hash<std::string>()(run.text);
    return hash;
}

PangoFontDescription* PangoTextEngine::description(const Font& font) const {
    PangoFontDescription* const description = pango_font_description_new();
    pango_font_description_set_family(description, _family.c_str());
    pango_font_description_set_weight(description, pangoWeight(font.weight));
    pango_font_description_set_absolute_size(description, std::clamp(font.size, 1.0, 1000.0) * PANGO_SCALE);
    return description;
}

void PangoTextEngine::setAttributes(PangoLayout* layout, const TextRequest& request) const {
    PangoAttrList* const list = pango_attr_list_new();
    pango_attr_list_insert(list, pango_attr_font_features_new("tnum=1"));
    std::size_t from = 0;
    for (const auto& run : request.text.runs()) {
        const std::size_t to = from + run.text.size();
        if (run.attributes.font) {
            PangoFontDescription* const font = description(*run.attributes.font);
            insert(list, pango_attr_font_desc_new(font), from, to);
            pango_font_description_free(font);
        }
        const auto insertColor = [&](const zornic::Color& color, auto makeColor, auto makeAlpha) {
            insert(
                list,
                makeColor(pangoComponent(color.red), pangoComponent(color.green), pangoComponent(color.blue)),
                from, to);
            insert(list, makeAlpha(std::max<guint16>(1, pangoComponent(color.alpha))), from, to);
        };
        if (const auto& color = run.attributes.color)
            insertColor(*color, pango_attr_foreground_new, pango_attr_foreground_alpha_new);
        if (const auto& color = run.attributes.backgroundColor; color && color->alpha > 0)
            insertColor(*color, pango_attr_background_new, pango_attr_background_alpha_new);
        from = to;
    }
    pango_layout_set_attributes(layout, list);
    pango_attr_list_unref(list);
}

std::shared_ptr<const zornic::TextLayout> PangoTextEngine::layout(const TextRequest& request) {
    waitForFonts();
    return isPlain(request) ? keptLayout(request) : keptLayout(cleaned(request));
}

PangoTextEngine::Layout PangoTextEngine::keptLayout(const TextRequest& request) {
    if (const auto known = _layouts.get(request)) return *known;
    auto layout = makeLayout(request);
    _layouts.set(request, layout, layout->cost());
    return layout;
}

PangoTextEngine::Layout PangoTextEngine::makeLayout(const TextRequest& request) {
    ObjectPointer<PangoLayout> layout(pango_layout_new(_context.get()));
    PangoFontDescription* const font = description(request.font);
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    const std::string text = request.text.plainText();
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    setAttributes(layout.get(), request);
    pango_layout_set_alignment(layout.get(), pangoAlignment(request.alignment, layout.get()));
    if (request.maxWidth < widestLayout) {
        // One unit more: a width that was measured before must be enough.
        const double units = std::ceil(std::max(0.0, request.maxWidth) * PANGO_SCALE);
        pango_layout_set_width(layout.get(), static_cast<int>(units) + 1);
        const bool clips = breakMode(request) == LineBreakMode::Clipping;
        pango_layout_set_wrap(layout.get(), clips ? PANGO_WRAP_CHAR : PANGO_WRAP_WORD_CHAR);
        pango_layout_set_ellipsize(layout.get(), ellipsizeMode(request));
        if (request.maxLines > 0) pango_layout_set_height(layout.get(), -request.maxLines);
    }
    limitLines(layout.get(), request, text);
    return std::make_shared<const PangoTextLayout>(request, std::move(layout), metricsOf(request));
}

zornic::FontMetrics PangoTextEngine::metricsOf(const TextRequest& request) {
    auto largest = knownMetrics(request.font);
    for (const auto& run : request.text.runs()) {
        if (!run.attributes.font) continue;
        const auto other = knownMetrics(*run.attributes.font);
        largest.ascent = std::max(largest.ascent, other.ascent);
        largest.descent = std::max(largest.descent, other.descent);
        largest.lineHeight = std::max(largest.lineHeight, other.lineHeight);
    }
    return largest;
}

zornic::FontMetrics PangoTextEngine::metrics(const Font& font) {
    waitForFonts();
    return knownMetrics(font);
}

zornic::FontMetrics PangoTextEngine::knownMetrics(const Font& font) {
    const auto [place, isNew] = _metrics.try_emplace(font);
    if (isNew) place->second = measured(font);
    return place->second;
}

zornic::FontMetrics PangoTextEngine::measured(const Font& font) {
    PangoFontDescription* const wanted = description(font);
    const Letter letter(_context.get(), wanted);
    pango_font_description_free(wanted);
    zornic::FontMetrics result{font.size, font.size / 4, font.size * 1.25, font.size / 2};
    if (!letter.font()) return result;
    // Pango's own metrics would lay out a sample text, each costing as much as a whole list's texts.
    hb_font_extents_t extents{};
    if (!hb_font_get_h_extents(pango_font_get_hb_font(letter.font()), &extents)) return result;
    result.ascent = pango_units_to_double(extents.ascender);
    result.descent = pango_units_to_double(-extents.descender);
    result.lineHeight =
        result.ascent + result.descent + std::max(0.0, pango_units_to_double(extents.line_gap));
    result.xHeight = letter.inkHeight();
    return result;
}

bool PangoTextEngine::prepareNextFallback() {
    constexpr std::array samples{"Ωλ Жя", "夜の歌", "月亮", "한국어", "أغنية", "שיר", "เพลง", "गीत", "♪→"};
    if (_preparedFallbacks < samples.size())
        layout({zornic::StyledText(samples[_preparedFallbacks++]), Font::systemFont(17)});
    return _preparedFallbacks < samples.size();
}

}  // namespace helmo
