#include "Views/ZRNAndOthersLabel.h"

#include <algorithm>

#include "Platform/Foundation/StringFormat.h"
#include "Platform/Foundation/TextTools.h"
#include "Platform/Toolkit/Canvas.h"

namespace zornic {

void ZRNAndOthersLabel::setItems(std::vector<std::string> items) {
    _items = std::move(items);
    _truncatedItemsString.reset();
    setNeedsDisplay();
}

void ZRNAndOthersLabel::setFrame(const Rect& frame) {
    if (frame.size != this->frame().size) _truncatedItemsString.reset();
    View::setFrame(frame);
}

void ZRNAndOthersLabel::setBounds(const Rect& bounds) {
    View::setBounds(bounds);
    _truncatedItemsString.reset();
}

TextAttributes ZRNAndOthersLabel::_textAttributes() const {
    return {.font = _font, .color = _textColor, .backgroundColor = backgroundColor()};
}

std::string ZRNAndOthersLabel::wording(const std::vector<std::string>& items) const {
    return formatted(_andOthers, {joined(items, _separator)});
}

std::shared_ptr<const TextLayout> ZRNAndOthersLabel::layout(const std::string& text) const {
    TextRequest request;
    request.text = StyledText(text, _textAttributes());
    request.font = _font;
    request.maxWidth = std::max(0.0, bounds().width());
    request.maxLines = 0;
    request.lineBreakMode = LineBreakMode::WordWrapping;
    return TextEngine::current().layout(request);
}

void ZRNAndOthersLabel::_truncateItemsToFit() {
    _truncatedItemsString.reset();
    auto items = _items;
    while (!items.empty()) {
        std::string candidate = wording(items);
        if (measuredHeight(candidate) <= bounds().height()) {
            _truncatedItemsString = std::move(candidate);
            return;
        }
        items.pop_back();
    }
}

double ZRNAndOthersLabel::actualHeight() {
    if (!_truncatedItemsString) _truncateItemsToFit();
    return _truncatedItemsString ? measuredHeight(*_truncatedItemsString) : 0;
}

double ZRNAndOthersLabel::desiredHeight() const { return measuredHeight(wording(_items)); }

void ZRNAndOthersLabel::drawRect(Canvas& canvas, const Rect& dirty) {
    View::drawRect(canvas, dirty);
    if (!_truncatedItemsString) _truncateItemsToFit();
    if (_items.empty()) return;
    const CanvasState state(canvas);
    canvas.clip(bounds());
    canvas.drawText(*layout(_truncatedItemsString.value_or(_items.front())), bounds().origin, _textColor);
}

}  // namespace zornic
