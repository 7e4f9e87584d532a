#include "Utilities/ZRNViews.h"

namespace zornic {

void ZRNTileViewsHorizontally(const std::vector<std::shared_ptr<View>>& views, const Rect& rect,
                              float spacing) {
    if (views.empty()) return;
    const auto count = static_cast<float>(views.size());
    const float width = (static_cast<float>(rect.width()) - (count - 1) * spacing) / count;
    auto x = static_cast<float>(rect.x());
    for (const auto& view : views) {
        view->setFrame({x, rect.y(), width, rect.height()});
        x = x + width + spacing;
    }
}

}  // namespace zornic
