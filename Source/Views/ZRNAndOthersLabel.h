#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Platform/Toolkit/View.h"

namespace zornic {

/** A list in words that names as many of its items as fit its height, within a wording such as "Anna, Ben and
   others"; the wording stands around the whole list too. Where not even one item fits so, the first is shown
   alone. What fits is found when it is drawn and kept until the items or the bounds change: font, colour,
   separator and wording wait for that. Main thread. */
class ZRNAndOthersLabel : public View {
public:
    explicit ZRNAndOthersLabel(const Rect& frame = {}) : View(frame) {}

    Font font() const { return _font; }
    void setFont(Font font) { _font = font; }
    Color textColor() const { return _textColor; }
    void setTextColor(Color color) { _textColor = color; }
    const std::vector<std::string>& items() const { return _items; }
    void setItems(std::vector<std::string> items);
    /** Between two items. */
    const std::string& separator() const { return _separator; }
    void setSeparator(std::string separator) { _separator = std::move(separator); }
    /** A format for the joined items. */
    const std::string& andOthers() const { return _andOthers; }
    void setAndOthers(std::string format) { _andOthers = std::move(format); }

    /** Height of what fits, in points; 0 when nothing does. */
    double actualHeight();
    /** Height that all items would take, in points. */
    double desiredHeight() const;

    void setFrame(const Rect& frame) override;
    void setBounds(const Rect& bounds) override;
    void drawRect(Canvas& canvas, const Rect& dirty) override;

    void _truncateItemsToFit();
    /** 1: lines are measured and drawn from the top of the first. */
    int _stringDrawingOptions() const { return 1; }
    TextAttributes _textAttributes() const;

private:
    std::string wording(const std::vector<std::string>& items) const;
    std::shared_ptr<const TextLayout> layout(const std::string& text) const;
    double measuredHeight(const std::string& text) const { return layout(text)->size().height; }

    Font _font;
    Color _textColor = labelDefaultColor();
    std::vector<std::string> _items;
    std::string _separator, _andOthers;
    std::optional<std::string> _truncatedItemsString;
};

}  // namespace zornic
