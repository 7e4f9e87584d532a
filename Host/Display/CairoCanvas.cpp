#include "Host/Display/CairoCanvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Host/Display/ColorFilters.h"
#include "Host/Display/PangoTextLayout.h"

namespace helmo {

using zornic::Color;
using zornic::Point;
using zornic::Rect;

namespace {

/** A colour instead of the picture's own: of a flattened image or a template. */
std::optional<Color> shapeColor(const zornic::Image& image, Color tint) {
    if (image.flatColor()) return image.flatColor();
    if (image.renderingMode() == zornic::ImageRenderingMode::AlwaysTemplate) return tint;
    return std::nullopt;
}

/** Drawing in pixels instead of points, until it goes. */
class PixelSpace {
public:
    explicit PixelSpace(cairo_t* context) : _context(context) {
        cairo_save(context);
        cairo_identity_matrix(context);
    }
    ~PixelSpace() { cairo_restore(_context); }
    PixelSpace(const PixelSpace&) = delete;
    PixelSpace& operator=(const PixelSpace&) = delete;

private:
    cairo_t* const _context;
};

}  // namespace

CairoCanvas::CairoCanvas(cairo_t* context, double scale, RenderCache& cache)
    : _context(cairo_reference(context)), _scale(scale > 0 ? scale : 1), _cache(cache) {
    cairo_save(_context);
    cairo_scale(_context, _scale, _scale);
}

CairoCanvas::~CairoCanvas() {
    cairo_restore(_context);
    cairo_destroy(_context);
}

// State

void CairoCanvas::save() {
    changeState([this] { cairo_save(_context); });
    if (!_groups.empty()) ++_groups.back().saves;
}

void CairoCanvas::restore() {
    changeState([this] { cairo_restore(_context); });
    if (!_groups.empty()) --_groups.back().saves;
}

void CairoCanvas::translate(Point by) {
    changeState([this, by] { cairo_translate(_context, by.x, by.y); });
}

void CairoCanvas::clip(const Rect& area) {
    changeState([this, area] {
        const auto box = area.empty() ? PixelRect() : snapped(area);
        cairo_matrix_t matrix;
        cairo_get_matrix(_context, &matrix);
        cairo_identity_matrix(_context);
        cairo_rectangle(_context, box.x, box.y, box.width, box.height);
        cairo_clip(_context);
        cairo_set_matrix(_context, &matrix);
    });
}

void CairoCanvas::clipRounded(const Rect& area, double radius) {
    changeState([this, area, radius] {
        addRoundedPath(area, radius);
        cairo_clip(_context);
    });
}

Rect CairoCanvas::clipBounds() const {
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(_context, &left, &top, &right, &bottom);
    return {left, top, right - left, bottom - top};
}

Point CairoCanvas::toPixels(Point point) const {
    cairo_user_to_device(_context, &point.x, &point.y);
    return point;
}

CairoCanvas::PixelRect CairoCanvas::snapped(const Rect& area) const {
    const Point from = toPixels(area.origin);
    // Beyond this nothing is seen, and the numbers stay within what Cairo can hold.
    static constexpr double farthest = 1 << 20;
    const auto side = [](double start, double length) {
        const double first = std::clamp(std::round(start), -farthest, farthest);
        const double last = std::clamp(std::round(start + length), -farthest, farthest);
        // A thin line has the same width wherever it lies; elsewhere neighbours must meet.
        const double width = length < 1.5 ? 1 : std::max(1.0, last - first);
        return std::pair(static_cast<int>(first), static_cast<int>(width));
    };
    const auto [x, width] = side(from.x, area.width() * _scale);
    const auto [y, height] = side(from.y, area.height() * _scale);
    return {x, y, width, height};
}

bool CairoCanvas::isVisible(const Rect& pixels) const {
    const Rect bounds = clipBounds();
    if (bounds.empty()) return false;
    const Point origin = toPixels(bounds.origin);
    return pixels.intersects({origin.x, origin.y, bounds.width() * _scale, bounds.height() * _scale});
}

void CairoCanvas::setColor(Color color) {
    cairo_set_source_rgba(_context, color.red, color.green, color.blue, color.alpha);
}

void CairoCanvas::addRoundedPath(const Rect& area, double radius) {
    cairo_matrix_t matrix;
    cairo_get_matrix(_context, &matrix);
    const auto box = area.empty() ? PixelRect() : snapped(area);
    cairo_identity_matrix(_context);
    const double round = std::clamp(radius * _scale, 0.0, std::min(box.width, box.height) / 2.0);
    constexpr double quarter = std::numbers::pi / 2;
    const double right = box.x + box.width - round, bottom = box.y + box.height - round;
    cairo_new_path(_context);
    cairo_arc(_context, right, box.y + round, round, -quarter, 0);
    cairo_arc(_context, right, bottom, round, 0, quarter);
    cairo_arc(_context, box.x + round, bottom, round, quarter, 2 * quarter);
    cairo_arc(_context, box.x + round, box.y + round, round, 2 * quarter, 3 * quarter);
    cairo_close_path(_context);
    cairo_set_matrix(_context, &matrix);
}

// Drawing

void CairoCanvas::fillRect(const Rect& area, Color color) {
    if (area.empty() || color.alpha <= 0) return;
    settle();
    const auto box = snapped(area);
    const PixelSpace space(_context);
    cairo_rectangle(_context, box.x, box.y, box.width, box.height);
    setColor(color);
    cairo_fill(_context);
}

void CairoCanvas::fillRoundedRect(const Rect& area, double radius, Color color) {
    if (area.empty() || color.alpha <= 0) return;
    settle();
    addRoundedPath(area, radius);
    setColor(color);
    cairo_fill(_context);
}

void CairoCanvas::fillGradient(const Rect& area, const std::vector<Color>& colors) {
    if (area.empty() || colors.empty()) return;
    settle();
    const auto box = snapped(area);
    const CairoPointer<cairo_pattern_t> pattern(cairo_pattern_create_linear(0, box.y, 0, box.y + box.height));
    const double last = std::max(1.0, static_cast<double>(colors.size() - 1));
    for (std::size_t i = 0; i < colors.size(); ++i)
        cairo_pattern_add_color_stop_rgba(pattern.get(), static_cast<double>(i) / last, colors[i].red,
                                          colors[i].green, colors[i].blue, colors[i].alpha);
    const PixelSpace space(_context);
    cairo_rectangle(_context, box.x, box.y, box.width, box.height);
    cairo_set_source(_context, pattern.get());
    cairo_fill(_context);
}

void CairoCanvas::drawImage(const zornic::Image& image, const Rect& area, Color tint) {
    if (!image || area.empty()) return;
    if (!_groups.empty() && _groups.back().deferred && !_groups.back().image) {
        _groups.back().image = image;
        _groups.back().steps.emplace_back([this, image, area, tint] { paintImage(image, area, tint); });
        return;
    }
    settle();
    paintImage(image, area, tint);
}

void CairoCanvas::paintImage(const zornic::Image& image, const Rect& area, Color tint) {
    const auto* const source = dynamic_cast<const CairoImageSource*>(image.source().get());
    if (!source || source->size().empty()) return;
    const auto box = snapped(area);
    if (!isVisible(Rect(box.x, box.y, box.width, box.height))) return;
    const auto surface =
        _cache.image(*source, {box.width, box.height, image.capInsets(), _scale, _blending.filters});
    if (!surface) return;

    const PixelSpace space(_context);
    cairo_set_operator(_context, _blending.mode);
    if (const auto color = shapeColor(image, tint)) {
        setColor(color->withAlpha(color->alpha * _blending.opacity));
        cairo_mask_surface(_context, surface.get(), box.x, box.y);
    } else {
        cairo_set_source_surface(_context, surface.get(), box.x, box.y);
        cairo_pattern_set_filter(cairo_get_source(_context), CAIRO_FILTER_NEAREST);
        cairo_rectangle(_context, box.x, box.y, box.width, box.height);
        cairo_clip(_context);
        cairo_paint_with_alpha(_context, _blending.opacity);
    }
}

void CairoCanvas::drawText(const zornic::TextLayout& text, Point topLeft, Color color) {
    const auto* const layout = dynamic_cast<const PangoTextLayout*>(&text);
    if (!layout || layout->lineCount() == 0) return;
    const Rect ink = layout->inkBounds();
    const Point inkAt = toPixels(topLeft + ink.origin);
    if (!isVisible({inkAt.x - 1, inkAt.y - 1, ink.width() * _scale + 2, ink.height() * _scale + 2})) return;
    settle();
    const auto rendered = _cache.text(*layout, color, _scale);
    const Point baseline = toPixels(topLeft + Point{0, layout->firstBaseline()});
    const PixelSpace space(_context);
    if (!rendered) {
        cairo_translate(_context, std::round(baseline.x), std::round(baseline.y));
        cairo_scale(_context, _scale, _scale);
        cairo_translate(_context, 0, -layout->firstBaseline());
        setColor(color);
        layout->show(_context);
        return;
    }
    for (const auto& part : *rendered) {
        const double left = std::round(baseline.x) + part.left, top = std::round(baseline.y) + part.top;
        if (part.isMask) {
            setColor(part.color.value_or(color));
            cairo_mask_surface(_context, part.pixels.get(), left, top);
        } else {
            cairo_set_source_surface(_context, part.pixels.get(), left, top);
            cairo_paint(_context);
        }
    }
}

// Groups

void CairoCanvas::clipToGroup(const Group& group) {
    cairo_save(_context);
    const Point from = toPixels(group.bounds.origin);
    const double left = std::floor(from.x), top = std::floor(from.y);
    const double right = std::ceil(from.x + group.bounds.width() * _scale);
    const double bottom = std::ceil(from.y + group.bounds.height() * _scale);
    cairo_matrix_t matrix;
    cairo_get_matrix(_context, &matrix);
    cairo_identity_matrix(_context);
    cairo_rectangle(_context, left, top, right - left, bottom - top);
    cairo_clip(_context);
    cairo_set_matrix(_context, &matrix);
}

void CairoCanvas::rewind(Group& group) {
    for (int i = 0; i <= group.saves; ++i) cairo_restore(_context);
    clipToGroup(group);
}

void CairoCanvas::settle() {
    if (_groups.empty() || !_groups.back().deferred) return;
    auto& group = _groups.back();
    rewind(group);
    cairo_push_group(_context);
    group.deferred = false;
    for (const auto& step : std::exchange(group.steps, {})) step();
}

void CairoCanvas::beginGroup(const Rect& bounds) {
    settle();
    _groups.push_back({bounds});
    clipToGroup(_groups.back());
}

void CairoCanvas::endGroup(double opacity, const std::vector<zornic::ColorFilter>& filters,
                           zornic::CompositingMode mode) {
    if (_groups.empty()) return;
    const auto cairoMode =
        mode == zornic::CompositingMode::DestinationOut ? CAIRO_OPERATOR_DEST_OUT : CAIRO_OPERATOR_OVER;
    // A shape in one colour is stored without it, so its filters can't be applied beforehand.
    if (const auto& image = _groups.back().image; image && !filters.empty() && shapeColor(*image, {}))
        settle();
    auto group = std::move(_groups.back());
    _groups.pop_back();
    if (group.deferred) {
        endDeferredGroup(std::move(group), {opacity, cairoMode, filters});
        return;
    }
    const CairoPointer<cairo_pattern_t> pattern(cairo_pop_group(_context));
    cairo_surface_t* surface = nullptr;
    if (!filters.empty() && cairo_pattern_get_surface(pattern.get(), &surface) == CAIRO_STATUS_SUCCESS &&
        cairo_surface_get_type(surface) == CAIRO_SURFACE_TYPE_IMAGE)
        applyFilters(Surface(cairo_surface_reference(surface)), filters);
    cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_NEAREST);
    cairo_set_operator(_context, cairoMode);
    cairo_set_source(_context, pattern.get());
    cairo_paint_with_alpha(_context, opacity);
    cairo_restore(_context);
}

void CairoCanvas::endDeferredGroup(Group group, Blending blending) {
    if (group.image) {
        rewind(group);
        _blending = std::move(blending);
        for (const auto& step : group.steps) step();
        _blending = {};
    }
    cairo_restore(_context);
}

}  // namespace helmo
