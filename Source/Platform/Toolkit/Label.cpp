#include "Platform/Toolkit/Label.h"

#include <algorithm>

namespace zornic {

namespace {

/** Shrinking goes on in such steps of the full size where the direct ratio did not do. */
constexpr double shrinkStep = 0.02;
/** A width that a layout pass rounded does not cost the last letter. */
constexpr double widthTolerance = 0.01;

StyledText scaled(const StyledText& text, double factor) {
    StyledText result;
    result.lineBreakMode = text.lineBreakMode;
    for (const StyledText::Run& run : text.runs()) {
        TextAttributes attributes = run.attributes;
        if (attributes.font) attributes.font->size *= factor;
        result.append(run.text, attributes);
    }
    return result;
}

TextRequest scaled(TextRequest request, double factor) {
    request.text = scaled(request.text, factor);
    request.font.size *= factor;
    return request;
}

/** `text` with no colours of its own. */
StyledText uncolored(const StyledText& text) {
    StyledText result;
    result.lineBreakMode = text.lineBreakMode;
    for (StyledText::Run run : text.runs()) {
        run.attributes.color.reset();
        run.attributes.backgroundColor.reset();
        result.append(run.text, run.attributes);
    }
    return result;
}

}  // namespace

Label::Label(const Rect& frame) : View(frame) {}

void Label::setText(const std::string& text) {
    setStyledText(text.empty() ? StyledText() : StyledText(text));
}

void Label::setStyledText(StyledText text) {
    if (text == _text) return;
    _text = std::move(text);
    changed();
}

void Label::setFont(Font font) {
    if (font == _font) return;
    _font = font;
    changed();
}

void Label::setTextColor(Color color) {
    if (color == _textColor) return;
    _textColor = color;
    setNeedsDisplay();
}

void Label::setOverrideColor(std::optional<Color> color) {
    if (color == _overrideColor) return;
    _overrideColor = color;
    _layout.reset();
    setNeedsDisplay();
}

void Label::setTextAlignment(TextAlignment alignment) {
    if (alignment == _alignment) return;
    _alignment = alignment;
    _layout.reset();
    setNeedsDisplay();
}

void Label::setNumberOfLines(int lines) {
    if (lines == _numberOfLines) return;
    _numberOfLines = lines;
    changed();
}

void Label::setLineBreakMode(LineBreakMode mode) {
    if (mode == _lineBreakMode) return;
    _lineBreakMode = mode;
    changed();
}

void Label::setAdjustsFontSizeToFitWidth(bool adjusts) {
    if (adjusts == _adjustsFontSize) return;
    _adjustsFontSize = adjusts;
    changed();
}

void Label::setMinimumScaleFactor(double factor) {
    if (factor == _minimumScaleFactor) return;
    _minimumScaleFactor = factor;
    changed();
}

/** Only a label that constraints place has its superview lay out again: the others are laid out by who fills
 * them. */
void Label::changed() {
    _layout.reset();
    setNeedsDisplay();
    if (!translatesAutoresizingMaskIntoConstraints() && superview()) superview()->setNeedsLayout();
}

std::shared_ptr<const TextLayout> Label::layoutForWidth(double width) {
    if (_layout && width == _layoutWidth) return _layout;
    TextRequest request;
    request.text = _overrideColor ? uncolored(_text) : _text;
    request.font = _font;
    request.maxWidth = std::max(0.0, width) + widthTolerance;
    request.maxLines = _numberOfLines;
    request.lineBreakMode = _text.lineBreakMode.value_or(_lineBreakMode);
    request.alignment = _alignment;

    auto& engine = TextEngine::current();
    auto layout = engine.layout(request);
    if (_adjustsFontSize && layout->isTruncated() && width > 0) {
        double factor = 1 - shrinkStep;
        if (_numberOfLines == 1) {
            TextRequest whole = request;
            whole.maxWidth = UnboundedLength;
            factor = width / std::max(width, engine.layout(whole)->size().width);
        }
        for (; factor > _minimumScaleFactor && layout->isTruncated(); factor -= shrinkStep)
            layout = engine.layout(scaled(request, factor));
        if (layout->isTruncated()) layout = engine.layout(scaled(request, _minimumScaleFactor));
    }
    _layout = layout;
    _layoutWidth = width;
    return layout;
}

Size Label::sizeThatFits(Size size) {
    if (_text.empty()) return {};
    TextRequest request;
    request.text = _text;
    request.font = _font;
    request.maxLines = _numberOfLines;
    request.lineBreakMode = _text.lineBreakMode.value_or(_lineBreakMode);
    if (_numberOfLines != 1 && size.width > 0) request.maxWidth = size.width + widthTolerance;
    const Size natural = TextEngine::current().layout(request)->size();
    const double scale = displayScale();
    return {ceiledToScale(natural.width, scale), ceiledToScale(natural.height, scale)};
}

double Label::firstBaselineFromTop() {
    const auto layout = layoutForWidth(bounds().width());
    return (bounds().height() - layout->size().height) / 2 + layout->firstBaseline();
}

double Label::baselineOffsetFromBottom() {
    const auto layout = layoutForWidth(bounds().width());
    return (bounds().height() + layout->size().height) / 2 - layout->lastBaseline();
}

bool Label::isTruncated() { return layoutForWidth(bounds().width())->isTruncated(); }

void Label::drawRect(Canvas& canvas, const Rect&) {
    if (_text.empty()) return;
    const auto layout = layoutForWidth(bounds().width());
    // Snapped where it stands in the window, so that texts side by side share their baseline.
    const Point place = convertToWindow(bounds().origin);
    const double baseline = place.y + firstBaselineFromTop();
    const double y =
        roundedToScale(baseline, canvas.scale()) - layout->firstBaseline() - place.y + bounds().y();
    const double x = roundedToScale(place.x, canvas.scale()) - place.x + bounds().x();
    canvas.drawText(*layout, {x, y}, _overrideColor.value_or(_textColor));
}

}  // namespace zornic
