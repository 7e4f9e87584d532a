#include "Host/Display/RenderCache.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>

#include "Host/Display/ColorFilters.h"
#include "Host/Display/PangoTextLayout.h"

namespace helmo {

namespace {

/** Glyphs are put on whole pixels by Cairo. Drawn this much wider and averaged back, they stand where the
   font wants them to a quarter of a pixel, and small text keeps its rhythm. */
constexpr int wideness = 4;

// Two of four bytes at a time, each with room for the sum of four.
constexpr std::uint32_t everyOther = 0x00FF00FF, half = 0x00020002;

void narrowColors(const unsigned char* from, unsigned char* to, int width) {
    for (int x = 0; x < width; ++x) {
        std::array<std::uint32_t, wideness> pixels;
        std::memcpy(pixels.data(), from + x * static_cast<int>(sizeof pixels), sizeof pixels);
        std::uint32_t even = half, odd = half;
        for (const auto pixel : pixels) {
            even += pixel & everyOther;
            odd += pixel >> 8 & everyOther;
        }
        const std::uint32_t mean = (even >> 2 & everyOther) | (odd >> 2 & everyOther) << 8;
        std::memcpy(to + x * 4, &mean, sizeof mean);
    }
}

void narrowCoverage(const unsigned char* from, unsigned char* to, int width) {
    for (int x = 0; x < width; ++x) {
        std::uint32_t parts;
        std::memcpy(&parts, from + x * wideness, sizeof parts);
        const std::uint32_t sums = (parts & everyOther) + (parts >> 8 & everyOther);
        to[x] = static_cast<unsigned char>(((sums & 0xFFFF) + (sums >> 16) + 2) >> 2);
    }
}

Surface narrowed(const Surface& wide, int width) {
    const auto format = cairo_image_surface_get_format(wide.get());
    Surface result(cairo_image_surface_create(format, width, wide.height()));
    if (!result) return result;
    const unsigned char* from = wide.pixels();
    unsigned char* to = result.pixels();
    for (int y = 0; y < wide.height(); ++y, from += wide.stride(), to += result.stride())
        format == CAIRO_FORMAT_A8 ? narrowCoverage(from, to, width) : narrowColors(from, to, width);
    cairo_surface_mark_dirty(result.get());
    return result;
}

/** Draws what has its ink there as wide as that takes, and narrows it. */
template <class Show>
RenderCache::TextPart drawnText(const PangoTextLayout& layout, const zornic::Rect& inkBounds, double scale,
                                cairo_format_t format, Show&& show) {
    const auto ink = inkBounds.offset({0, -layout.firstBaseline()});
    const auto pixel = [scale](double points, int margin) {
        return static_cast<int>(std::floor(points * scale)) + margin;
    };
    RenderCache::TextPart part{{}, pixel(ink.x(), -1), pixel(ink.y(), -1), format == CAIRO_FORMAT_A8};
    const int width = pixel(ink.maxX(), 2) - part.left, height = pixel(ink.maxY(), 2) - part.top;
    const Surface wide(cairo_image_surface_create(format, width * wideness, height));
    if (!wide) return part;
    const auto context = makeContext(wide);
    cairo_translate(context.get(), -part.left * wideness, -part.top);
    cairo_scale(context.get(), scale * wideness, scale);
    cairo_translate(context.get(), 0, -layout.firstBaseline());
    show(context.get());
    part.pixels = narrowed(wide, width);
    return part;
}

std::vector<RenderCache::TextPart> renderedText(const PangoTextLayout& layout, const zornic::Color& color,
                                                double scale) {
    std::vector<RenderCache::TextPart> text;
    for (const auto& part : layout.parts()) {
        text.push_back(drawnText(layout, part.ink, scale, CAIRO_FORMAT_A8,
                                 [&](cairo_t* context) { layout.show(context, part); }));
        text.back().color = part.color;
    }
    if (!layout.parts().empty()) return text;
    text.push_back(drawnText(layout, layout.inkBounds(), scale, CAIRO_FORMAT_ARGB32, [&](cairo_t* context) {
        cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
        layout.show(context);
    }));
    return text;
}

/** Where the caps of one direction end, in pixels: start, first cap, last cap, end. Caps that don't fit share
   what there is. */
std::array<int, 4> capEdges(int length, double first, double last) {
    const double together = first + last;
    const double fit = together > length ? length / together : 1;
    return {0, static_cast<int>(std::lround(first * fit)), length - static_cast<int>(std::lround(last * fit)),
            length};
}

Surface stretched(const CairoImageSource& source, const RenderCache::ImageForm& form) {
    const auto natural = [&](double points) {
        return std::clamp(static_cast<int>(std::lround(points * form.scale)), 1, CairoImageSource::maxSide);
    };
    const auto whole = source.rendered(natural(source.size().width), natural(source.size().height));
    Surface result(form.width, form.height);
    if (!whole || !result) return {};
    const auto& caps = *form.caps;
    const auto fromX = capEdges(whole.width(), caps.left * form.scale, caps.right * form.scale);
    const auto fromY = capEdges(whole.height(), caps.top * form.scale, caps.bottom * form.scale);
    const auto toX = capEdges(form.width, caps.left * form.scale, caps.right * form.scale);
    const auto toY = capEdges(form.height, caps.top * form.scale, caps.bottom * form.scale);
    const auto context = makeContext(result);
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) {
            const int fromWidth = fromX[column + 1] - fromX[column], fromHeight = fromY[row + 1] - fromY[row];
            const int toWidth = toX[column + 1] - toX[column], toHeight = toY[row + 1] - toY[row];
            if (fromWidth <= 0 || fromHeight <= 0 || toWidth <= 0 || toHeight <= 0) continue;
            // A piece of its own, so that no neighbour bleeds in where it is stretched.
            const Surface piece(cairo_surface_create_for_rectangle(whole.get(), fromX[column], fromY[row],
                                                                   fromWidth, fromHeight));
            cairo_save(context.get());
            cairo_rectangle(context.get(), toX[column], toY[row], toWidth, toHeight);
            cairo_translate(context.get(), toX[column], toY[row]);
            cairo_scale(context.get(), static_cast<double>(toWidth) / fromWidth,
                        static_cast<double>(toHeight) / fromHeight);
            cairo_set_source_surface(context.get(), piece.get(), 0, 0);
            cairo_pattern_set_extend(cairo_get_source(context.get()), CAIRO_EXTEND_PAD);
            cairo_fill(context.get());
            cairo_restore(context.get());
        }
    return result;
}

/** A copy that may be changed: a source may hand out the pixels that it keeps. */
Surface copied(const Surface& surface) {
    Surface copy(surface.width(), surface.height());
    if (!copy) return copy;
    const auto context = makeContext(copy);
    cairo_set_source_surface(context.get(), surface.get(), 0, 0);
    cairo_paint(context.get());
    return copy;
}

}  // namespace

RenderCache::RenderCache(std::size_t imageLimit, std::size_t textLimit)
    : _largestImage(imageLimit / 2), _images(imageLimit), _texts(textLimit) {}

std::size_t RenderCache::KeyHash::operator()(const Key& key) const {
    std::size_t hash = key.size();
    for (const double number : key) hash = hash * 1000003 ^ std::hash<double>()(number);
    return hash;
}

Surface RenderCache::image(const CairoImageSource& source, const ImageForm& form) {
    if (!CairoImageSource::isWithinLimits(form.width, form.height)) return {};
    if (!form.caps && form.filters.empty())
        if (auto pixels = source.held(form.width, form.height)) return pixels;
    Key key{static_cast<double>(source.identity()), static_cast<double>(form.width),
            static_cast<double>(form.height)};
    if (form.caps)
        key.insert(key.end(),
                   {form.caps->top, form.caps->left, form.caps->bottom, form.caps->right, form.scale});
    for (const auto& filter : form.filters)
        key.insert(key.end(), {-1 - static_cast<double>(filter.type), filter.inputAmount});
    if (const auto known = _images.get(key)) return *known;

    auto surface = form.caps ? stretched(source, form) : source.rendered(form.width, form.height);
    if (surface && !form.filters.empty()) {
        surface = copied(surface);
        applyFilters(surface, form.filters);
    }
    // One giant would drive out everything else.
    if (surface && surface.bytes() <= _largestImage) _images.set(key, surface, surface.bytes());
    return surface;
}

RenderCache::Text RenderCache::text(const PangoTextLayout& layout, zornic::Color color, double scale) {
    const auto ink = layout.inkBounds();
    constexpr double mostPixels = 1 << 20, mostWidth = 8000;
    if (ink.width() * scale > mostWidth || ink.width() * ink.height() * scale * scale > mostPixels)
        return nullptr;
    Key key{static_cast<double>(layout.identity()), scale};
    if (layout.parts().empty()) key.insert(key.end(), {color.red, color.green, color.blue, color.alpha});
    if (auto known = _texts.get(key)) return *known;
    const auto text = std::make_shared<const std::vector<TextPart>>(renderedText(layout, color, scale));
    std::size_t bytes = 0;
    for (const auto& part : *text) {
        if (!part.pixels) return nullptr;
        bytes += part.pixels.bytes();
    }
    _texts.set(key, text, bytes);
    return text;
}

}  // namespace helmo
