#include "Tests/Support/RecordingCanvas.h"

#include "Platform/Toolkit/FixedWidthTextEngine.h"

namespace zornic {

namespace {

std::string shownText(const TextLayout& layout) {
    const auto* const fixed = dynamic_cast<const FixedWidthTextLayout*>(&layout);
    if (!fixed) return layout.request().text.plainText();
    std::string text;
    for (const auto& line : fixed->lines()) text += (text.empty() ? "" : "\n") + line.text;
    return text;
}

}  // namespace

RecordingCanvas::RecordingCanvas(const Rect& area, double scale) : _scale(scale), _states{{{0, 0}, area}} {}

const RecordingCanvas::DrawnText* RecordingCanvas::text(const std::string& text) const {
    const auto at =
        std::find_if(texts.begin(), texts.end(), [&](const auto& drawn) { return drawn.text == text; });
    return at == texts.end() ? nullptr : &*at;
}

const RecordingCanvas::DrawnImage* RecordingCanvas::image(const std::string& name) const {
    const auto at =
        std::find_if(images.begin(), images.end(), [&](const auto& drawn) { return drawn.name == name; });
    return at == images.end() ? nullptr : &*at;
}

std::vector<std::string> RecordingCanvas::shownTexts() const {
    std::vector<std::string> shown;
    for (const DrawnText& drawn : texts) shown.push_back(drawn.text);
    return shown;
}

void RecordingCanvas::clip(const Rect& area) {
    _states.back().clip = _states.back().clip.intersected(placed(area));
}

Rect RecordingCanvas::clipBounds() const {
    const State& state = _states.back();
    return state.clip.offset(Point{} - state.origin);
}

void RecordingCanvas::fillRoundedRect(const Rect& area, double radius, Color color) {
    if (!isHidden(area)) fills.push_back({placed(area), color, radius, ++_step});
}

void RecordingCanvas::drawImage(const Image& image, const Rect& area, Color tint) {
    if (!isHidden(area)) images.push_back({image.name(), image, placed(area), tint, ++_step});
}

void RecordingCanvas::drawText(const TextLayout& text, Point topLeft, Color color) {
    const TextRequest& request = text.request();
    Rect area{topLeft, text.size()};
    if (request.maxWidth < UnboundedLength) {
        const double spare = request.maxWidth - area.width();
        if (request.alignment == TextAlignment::Center) area.origin.x += spare / 2;
        if (request.alignment == TextAlignment::Right) area.origin.x += spare;
    }
    if (isHidden(area)) return;
    area = placed(area);
    texts.push_back({shownText(text), area, area.y() + text.firstBaseline(), color,
                     std::make_shared<TextRequest>(request), ++_step});
}

void RecordingCanvas::beginGroup(const Rect& bounds) {
    Group group;
    group.bounds = placed(bounds);
    group.beginStep = ++_step;
    _open.push_back(std::move(group));
}

void RecordingCanvas::endGroup(double opacity, const std::vector<ColorFilter>& filters,
                               CompositingMode mode) {
    Group group = std::move(_open.back());
    _open.pop_back();
    group.opacity = opacity;
    group.filters = filters;
    group.mode = mode;
    group.endStep = ++_step;
    groups.push_back(std::move(group));
}

}  // namespace zornic
