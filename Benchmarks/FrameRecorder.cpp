#include "Benchmarks/FrameRecorder.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace helmo::benchmarks {

using zornic::Color;
using zornic::Point;
using zornic::Rect;
using Box = BareFrame::Box;

namespace {

int rounded(double value) { return static_cast<int>(std::lround(value)); }

/** A line is a pixel wide wherever it lies; elsewhere neighbours meet. */
int extent(double start, double length) {
    return length < 1.5 ? 1 : std::max(1, rounded(start + length) - rounded(start));
}

/** The shape of `pixels` in one colour. */
Surface tinted(const Surface& pixels, const Color& color) {
    Surface copy(pixels.width(), pixels.height());
    const auto context = makeContext(copy);
    cairo_set_source_rgba(context.get(), color.red, color.green, color.blue, color.alpha);
    cairo_mask_surface(context.get(), pixels.get(), 0, 0);
    return copy;
}

[[noreturn]] void refuse(const char* what) {
    throw std::runtime_error(std::string("a bare frame has no ") + what);
}

}  // namespace

Box FrameRecorder::placed(const Rect& area) const {
    const Rect there = area.offset(_states.back().origin);
    return {rounded(there.x()), rounded(there.y()), extent(there.x(), there.width()),
            extent(there.y(), there.height())};
}

void FrameRecorder::clip(const Rect& area) {
    Box& clip = _states.back().clip;
    const Box box = placed(area);
    const int right = std::min(clip.x + clip.width, box.x + box.width);
    const int bottom = std::min(clip.y + clip.height, box.y + box.height);
    clip.x = std::max(clip.x, box.x);
    clip.y = std::max(clip.y, box.y);
    clip.width = std::max(0, right - clip.x);
    clip.height = std::max(0, bottom - clip.y);
}

void FrameRecorder::clipRounded(const Rect&, double) { refuse("rounded clips"); }

Rect FrameRecorder::clipBounds() const {
    const auto& [origin, clip] = _states.back();
    return Rect(clip.x, clip.y, clip.width, clip.height).offset(Point{} - origin);
}

void FrameRecorder::fillRect(const Rect& area, Color color) {
    if (!area.empty() && color.alpha > 0)
        _frame.add(BareFrame::Fill{placed(area), 0, color}, _states.back().clip);
}

void FrameRecorder::fillRoundedRect(const Rect& area, double radius, Color color) {
    const Box box = placed(area);
    const double round = std::min(radius, std::min(box.width, box.height) / 2.0);
    if (!area.empty() && color.alpha > 0) _frame.add(BareFrame::Fill{box, round, color}, _states.back().clip);
}

void FrameRecorder::fillGradient(const Rect& area, const std::vector<Color>& colors) {
    const Box box = placed(area);
    if (area.empty() || colors.empty()) return;
    const Surface pixels(box.width, box.height);
    const auto context = makeContext(pixels);
    const CairoPointer<cairo_pattern_t> pattern(cairo_pattern_create_linear(0, 0, 0, box.height));
    const double last = std::max<double>(1, static_cast<double>(colors.size()) - 1);
    for (std::size_t at = 0; at < colors.size(); ++at)
        cairo_pattern_add_color_stop_rgba(pattern.get(), static_cast<double>(at) / last, colors[at].red,
                                          colors[at].green, colors[at].blue, colors[at].alpha);
    cairo_set_source(context.get(), pattern.get());
    cairo_paint(context.get());
    _frame.add(BareFrame::Picture{box, pixels}, _states.back().clip);
}

void FrameRecorder::drawImage(const zornic::Image& image, const Rect& area, Color tint) {
    const auto* const source = dynamic_cast<const CairoImageSource*>(image.source().get());
    if (!source || area.empty()) return;
    const Box box = placed(area);
    const auto pixels = _renders.image(*source, {box.width, box.height, image.capInsets(), 1, {}});
    auto color = image.flatColor();
    if (!color && image.renderingMode() == zornic::ImageRenderingMode::AlwaysTemplate) color = tint;
    _frame.add(BareFrame::Picture{box, color ? tinted(pixels, *color) : pixels}, _states.back().clip);
}

void FrameRecorder::drawText(const zornic::TextLayout& text, Point topLeft, Color color) {
    if (text.lineCount() == 0) return;
    const auto layout = std::dynamic_pointer_cast<const PangoTextLayout>(
        zornic::TextEngine::current().layout(text.request()));
    const Point at = topLeft + _states.back().origin;
    const int x = rounded(at.x), y = rounded(at.y + layout->firstBaseline());
    const Rect ink = layout->inkBounds().offset({0.0 + x, y - layout->firstBaseline()});
    const Box box{static_cast<int>(std::floor(ink.x())), static_cast<int>(std::floor(ink.y())),
                  static_cast<int>(std::ceil(ink.width())) + 1,
                  static_cast<int>(std::ceil(ink.height())) + 1};
    _frame.add(BareFrame::Text{box, layout, color, x, y}, _states.back().clip);
}

void FrameRecorder::beginGroup(const Rect&) { refuse("groups"); }

void FrameRecorder::endGroup(double, const std::vector<zornic::ColorFilter>&, zornic::CompositingMode) {
    refuse("groups");
}

BareFrame recordedFrame(zornic::Window& window, const Box& area) {
    FrameRecorder recorder(area);
    window.render(recorder);
    BareFrame frame = recorder.takeFrame();
    frame.reduce(area);
    return frame;
}

}  // namespace helmo::benchmarks
