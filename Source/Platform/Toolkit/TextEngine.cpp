#include "Platform/Toolkit/TextEngine.h"

#include <algorithm>

#include "Platform/Toolkit/FixedWidthTextEngine.h"

namespace zornic {

namespace {

std::shared_ptr<TextEngine>& installedEngine() {
    static std::shared_ptr<TextEngine> engine;
    return engine;
}

}  // namespace

StyledText::StyledText(std::string text, TextAttributes attributes) { append(std::move(text), attributes); }

void StyledText::append(std::string text, TextAttributes attributes) {
    if (!text.empty()) _runs.push_back({std::move(text), attributes});
}

std::string StyledText::plainText() const {
    std::string text;
    for (const Run& run : _runs) text += run.text;
    return text;
}

TextEngine& TextEngine::current() {
    static FixedWidthTextEngine fixedWidth;
    const auto& installed = installedEngine();
    return installed ? *installed : fixedWidth;
}

void TextEngine::install(std::shared_ptr<TextEngine> engine) { installedEngine() = std::move(engine); }

Size sizeOfText(const std::string& text, const Font& font, Size maxSize) {
    TextRequest request;
    request.text = StyledText(text);
    request.font = font;
    if (maxSize.width < UnboundedLength) {
        request.maxWidth = maxSize.width;
        request.maxLines = 0;
    }
    const Size size = TextEngine::current().layout(request)->size();
    return {size.width, std::min(size.height, maxSize.height)};
}

}  // namespace zornic
