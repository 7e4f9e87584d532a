#include "Benchmarks/Floors/BareFrame.h"

#include <algorithm>
#include <numbers>

namespace helmo::benchmarks {

namespace {

using Box = BareFrame::Box;

Box intersection(const Box& one, const Box& other) {
    const int x = std::max(one.x, other.x), y = std::max(one.y, other.y);
    const int right = std::min(one.x + one.width, other.x + other.width);
    const int bottom = std::min(one.y + one.height, other.y + other.height);
    return {x, y, std::max(0, right - x), std::max(0, bottom - y)};
}

void setColor(cairo_t* context, const zornic::Color& color) {
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
}

void draw(cairo_t* context, const BareFrame::Fill& fill) {
    const auto& box = fill.box;
    setColor(context, fill.color);
    if (fill.radius > 0) {
        constexpr double quarter = std::numbers::pi / 2;
        const double round = fill.radius, right = box.x + box.width - round;
        const double bottom = box.y + box.height - round;
        cairo_new_path(context);
        cairo_arc(context, right, box.y + round, round, -quarter, 0);
        cairo_arc(context, right, bottom, round, 0, quarter);
        cairo_arc(context, box.x + round, bottom, round, quarter, 2 * quarter);
        cairo_arc(context, box.x + round, box.y + round, round, 2 * quarter, 3 * quarter);
        cairo_close_path(context);
    } else {
        cairo_rectangle(context, box.x, box.y, box.width, box.height);
    }
    cairo_fill(context);
}

void draw(cairo_t* context, const BareFrame::Picture& picture) {
    cairo_set_source_surface(context, picture.pixels.get(), picture.box.x, picture.box.y);
    cairo_rectangle(context, picture.box.x, picture.box.y, picture.box.width, picture.box.height);
    cairo_fill(context);
}

void draw(cairo_t* context, const BareFrame::Text& text) {
    setColor(context, text.color);
    cairo_translate(context, text.x, text.y - text.layout->firstBaseline());
    text.layout->show(context);
    cairo_translate(context, -text.x, text.layout->firstBaseline() - text.y);
}

const Box& boxOf(const BareFrame::Mark& mark) {
    return std::visit([](const auto& any) -> const Box& { return any.box; }, mark);
}

/** The part of a picture that lies in `box`. */
Surface cutOut(const BareFrame::Picture& picture, const Box& box) {
    const Surface part(cairo_surface_create_similar_image(
        picture.pixels.get(), cairo_image_surface_get_format(picture.pixels.get()), box.width, box.height));
    const auto context = makeContext(part);
    cairo_set_source_surface(context.get(), picture.pixels.get(), picture.box.x - box.x,
                             picture.box.y - box.y);
    cairo_paint(context.get());
    return part;
}

const BareFrame::Fill* opaqueFill(const BareFrame::Mark& mark) {
    const auto* const fill = std::get_if<BareFrame::Fill>(&mark);
    return fill && fill->radius <= 0 && fill->color.alpha >= 1 ? fill : nullptr;
}

}  // namespace

bool BareFrame::Box::contains(const Box& other) const {
    return other.x >= x && other.y >= y && other.x + other.width <= x + width &&
           other.y + other.height <= y + height;
}

bool BareFrame::Box::intersects(const Box& other) const {
    return intersection(*this, other).width > 0 && intersection(*this, other).height > 0;
}

void BareFrame::add(Mark mark, const Box& clip) {
    if (!boxOf(mark).intersects(clip)) return;
    if (auto* const fill = std::get_if<Fill>(&mark)) {
        if (fill->radius <= 0) fill->box = intersection(fill->box, clip);
    } else if (auto* const picture = std::get_if<Picture>(&mark); picture && !clip.contains(picture->box)) {
        const Box seen = intersection(picture->box, clip);
        mark = Picture{seen, cutOut(*picture, seen)};
    }
    _marks.push_back(std::move(mark));
}

/** A fill over one of the same colour, with nothing between them. */
void BareFrame::dropRepeated() {
    for (std::size_t at = _marks.size(); at-- > 0;) {
        const auto* const fill = opaqueFill(_marks[at]);
        if (!fill) continue;
        auto below = at;
        while (below > 0 && !boxOf(_marks[below - 1]).intersects(fill->box)) --below;
        const auto* const ground = below > 0 ? opaqueFill(_marks[below - 1]) : nullptr;
        if (ground && ground->color == fill->color && ground->box.contains(fill->box))
            _marks.erase(_marks.begin() + static_cast<std::ptrdiff_t>(at));
    }
}

/** What lies under opaque fills: marks wholly, fills as far as what is left of them is a rectangle. */
void BareFrame::dropCovered(const Box& area) {
    std::vector<bool> covered(static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height));
    const auto pixel = [&](int x, int y) {
        return covered[static_cast<std::size_t>(y - area.y) * static_cast<std::size_t>(area.width) +
                       static_cast<std::size_t>(x - area.x)];
    };
    for (std::size_t at = _marks.size(); at-- > 0;) {
        const Box box = intersection(boxOf(_marks[at]), area);
        int left = box.x + box.width, top = box.y + box.height, right = box.x, bottom = box.y;
        for (int y = box.y; y < box.y + box.height; ++y)
            for (int x = box.x; x < box.x + box.width; ++x) {
                if (pixel(x, y)) continue;
                left = std::min(left, x);
                top = std::min(top, y);
                right = std::max(right, x + 1);
                bottom = y + 1;
            }
        if (left >= right) {
            _marks.erase(_marks.begin() + static_cast<std::ptrdiff_t>(at));
        } else if (opaqueFill(_marks[at])) {
            for (int y = box.y; y < box.y + box.height; ++y)
                for (int x = box.x; x < box.x + box.width; ++x) pixel(x, y) = true;
            std::get<Fill>(_marks[at]).box = {left, top, right - left, bottom - top};
        }
    }
}

void BareFrame::reduce(const Box& area) {
    dropRepeated();
    dropCovered(area);
}

CairoPointer<cairo_t> BareFrame::clippedContext(const Surface& pixels, const Box& clip) {
    auto context = makeContext(pixels);
    cairo_rectangle(context.get(), clip.x, clip.y, clip.width, clip.height);
    cairo_clip(context.get());
    return context;
}

void BareFrame::draw(cairo_t* context) const {
    for (const Mark& mark : _marks)
        std::visit([&](const auto& any) { benchmarks::draw(context, any); }, mark);
}

}  // namespace helmo::benchmarks
