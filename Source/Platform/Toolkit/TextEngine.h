#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Toolkit/Color.h"
#include "Platform/Toolkit/Font.h"
#include "Platform/Toolkit/Geometry.h"

namespace zornic {

enum class TextAlignment { Left = 0, Center = 1, Right = 2, Natural = 4 };
enum class LineBreakMode {
    WordWrapping = 0,
    Clipping = 2,
    TruncatingHead = 3,
    TruncatingTail = 4,
    TruncatingMiddle = 5
};

/** Attributes of a run of text; what is unset is the label's. */
struct TextAttributes {
    std::optional<Font> font;
    std::optional<Color> color;
    std::optional<Color> backgroundColor;
    friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

/** Text in runs of different looks, with an optional line-break mode for the whole. A value. */
class StyledText {
public:
    struct Run {
        std::string text;
        TextAttributes attributes;
        friend bool operator==(const Run&, const Run&) = default;
    };
    StyledText() = default;
    explicit StyledText(std::string text, TextAttributes attributes = {});
    void append(std::string text, TextAttributes attributes = {});
    const std::vector<Run>& runs() const { return _runs; }
    std::string plainText() const;
    bool empty() const { return plainText().empty(); }
    std::optional<LineBreakMode> lineBreakMode;
    friend bool operator==(const StyledText&, const StyledText&) = default;

private:
    std::vector<Run> _runs;
};

/** "Unbounded" for a layout's width or height, in points. */
inline constexpr double UnboundedLength = 3.4028234663852886e38;

/** What is to be laid out, and in what room. */
struct TextRequest {
    StyledText text;
    Font font;  // of runs that name none
    double maxWidth = UnboundedLength;
    /** 0: as many as needed. */
    int maxLines = 1;
    LineBreakMode lineBreakMode = LineBreakMode::TruncatingTail;
    TextAlignment alignment = TextAlignment::Natural;
    friend bool operator==(const TextRequest&, const TextRequest&) = default;
};

/** Text laid out in lines, ready to be drawn: at the left of its room, for lines are aligned within
   `maxWidth` where there is one, within the longest line otherwise. Immutable. */
class TextLayout {
public:
    virtual ~TextLayout() = default;
    /** Points, whole lines. */
    virtual Size size() const = 0;
    /** From the top, in points. */
    virtual double firstBaseline() const = 0;
    virtual double lastBaseline() const = 0;
    virtual int lineCount() const = 0;
    /** Whether something did not fit and an ellipsis stands for it. */
    virtual bool isTruncated() const = 0;
    /** Around all that is painted, seen from the top left, in points: it may stand out of the lines. */
    virtual Rect inkBounds() const = 0;
    const TextRequest& request() const { return _request; }

protected:
    explicit TextLayout(TextRequest request) : _request(std::move(request)) {}

private:
    const TextRequest _request;
};

struct FontMetrics {
    double ascent = 0, descent = 0, lineHeight = 0, xHeight = 0;  // all positive
};

/** Measures and lays out text; the host's. Layouts are kept by content, so asking again is cheap. Main
 * thread. */
class TextEngine {
public:
    virtual ~TextEngine() = default;
    /** The engine in use: the host's, or one of fixed widths (half the size a code point) where none is
     * installed. */
    static TextEngine& current();
    static void install(std::shared_ptr<TextEngine> engine);

    virtual std::shared_ptr<const TextLayout> layout(const TextRequest& request) = 0;
    virtual FontMetrics metrics(const Font& font) = 0;
};

/** Size that `text` takes in one line, or wrapped into `maxSize.width`. Points. */
Size sizeOfText(const std::string& text, const Font& font, Size maxSize = {UnboundedLength, UnboundedLength});

}  // namespace zornic
