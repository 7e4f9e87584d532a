#include "Platform/Toolkit/FixedWidthTextEngine.h"

#include <algorithm>

#include "Platform/Foundation/TextTools.h"

namespace zornic {

namespace {

constexpr double widthFactor = 0.5, ascentFactor = 0.95, descentFactor = 0.25;
constexpr char32_t ellipsis = U'\u2026';

struct Glyph {
    char32_t codePoint;
    double size;
    double width() const { return size * widthFactor; }
};
using Glyphs = std::vector<Glyph>;

Glyphs glyphsOf(const TextRequest& request) {
    Glyphs glyphs;
    for (const StyledText::Run& run : request.text.runs()) {
        const double size = run.attributes.font.value_or(request.font).size;
        for (const char32_t codePoint : decodedUtf8(run.text)) glyphs.push_back({codePoint, size});
    }
    return glyphs;
}

double widthOf(const Glyphs& glyphs) {
    double width = 0;
    for (const Glyph& glyph : glyphs) width += glyph.width();
    return width;
}

/** How many glyphs from `begin` on fit. */
template <class Iterator>
std::ptrdiff_t fitting(Iterator begin, Iterator end, double room) {
    auto at = begin;
    for (; at != end && at->width() <= room; ++at) room -= at->width();
    return at - begin;
}

/** Cuts a line that is too long where the mode says, in whole glyphs, and puts an ellipsis there. */
Glyphs truncated(const Glyphs& line, double room, LineBreakMode mode) {
    const auto head = [&](double width) {
        return Glyphs(line.begin(), line.begin() + fitting(line.begin(), line.end(), width));
    };
    const auto tail = [&](double width) {
        return Glyphs(line.end() - fitting(line.rbegin(), line.rend(), width), line.end());
    };
    if (mode == LineBreakMode::Clipping) return head(room);
    const Glyph mark{ellipsis, line.front().size};
    room -= mark.width();
    Glyphs result, end;
    if (mode == LineBreakMode::TruncatingHead) {
        end = tail(room);
    } else if (mode == LineBreakMode::TruncatingMiddle) {
        result = head(room / 2);
        end = tail(room - widthOf(result));
    } else {
        result = head(room);
        while (!result.empty() && result.back().codePoint == U' ') result.pop_back();
    }
    result.push_back(mark);
    result.insert(result.end(), end.begin(), end.end());
    return result;
}

/** Where the line that begins at `start` ends, and where the next begins. */
std::pair<std::size_t, std::size_t> lineEnd(const Glyphs& glyphs, std::size_t start, double room) {
    std::size_t space = start;
    for (std::size_t at = start; at < glyphs.size(); ++at) {
        if (glyphs[at].codePoint == U'\n') return {at, at + 1};
        if (glyphs[at].codePoint == U' ') space = at;
        room -= glyphs[at].width();
        if (room >= 0 || space == at) continue;
        if (space > start) return {space, space + 1};
        const std::size_t end = std::max(at, start + 1);
        return {end, end};
    }
    return {glyphs.size(), glyphs.size()};
}

FixedWidthTextLayout::Line lineOf(const Glyphs& glyphs, const Font& font) {
    std::u32string text;
    double size = glyphs.empty() ? font.size : 0;
    for (const Glyph& glyph : glyphs) {
        text += glyph.codePoint;
        size = std::max(size, glyph.size);
    }
    return {encodedUtf8(text), widthOf(glyphs), size * ascentFactor, size * descentFactor};
}

}  // namespace

FixedWidthTextLayout::FixedWidthTextLayout(TextRequest request, std::vector<Line> lines, bool truncated)
    : TextLayout(std::move(request)), _lines(std::move(lines)), _truncated(truncated) {}

Size FixedWidthTextLayout::size() const {
    Size size;
    for (const Line& line : _lines) {
        size.width = std::max(size.width, line.width);
        size.height += line.ascent + line.descent;
    }
    return size;
}

std::shared_ptr<const TextLayout> FixedWidthTextEngine::layout(const TextRequest& request) {
    const Glyphs glyphs = glyphsOf(request);
    const auto maxLines = static_cast<std::size_t>(std::max(0, request.maxLines));
    std::vector<FixedWidthTextLayout::Line> lines;
    bool cut = false;
    std::size_t start = 0;
    while (start < glyphs.size() || lines.empty()) {
        auto [end, next] = lineEnd(glyphs, start, request.maxWidth);
        const auto begin = glyphs.begin() + static_cast<std::ptrdiff_t>(start);
        Glyphs line(begin, glyphs.begin() + static_cast<std::ptrdiff_t>(end));
        if (lines.size() + 1 == maxLines && next < glyphs.size()) {  // the last line takes all that is left
            line.assign(begin, glyphs.end());
            for (Glyph& glyph : line)
                if (glyph.codePoint == U'\n') glyph.codePoint = U' ';
            next = glyphs.size();
        }
        if (lines.size() + 1 == maxLines && widthOf(line) > request.maxWidth) {
            line = truncated(line, request.maxWidth, request.lineBreakMode);
            cut = true;
        }
        lines.push_back(lineOf(line, request.font));
        start = next;
    }
    return std::make_shared<FixedWidthTextLayout>(request, std::move(lines), cut);
}

FontMetrics FixedWidthTextEngine::metrics(const Font& font) {
    return {font.size * ascentFactor, font.size * descentFactor, font.size * (ascentFactor + descentFactor),
            font.size * 0.5};
}

}  // namespace zornic
