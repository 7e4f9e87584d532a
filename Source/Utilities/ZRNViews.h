#pragma once

#include <memory>
#include <vector>

#include "Platform/Toolkit/View.h"

namespace zornic {

/** The same size at the origin. */
inline Rect ZRNCGRectZeroOrigin(const Rect& rect) { return {{0, 0}, rect.size}; }

/** Lays views out side by side in `rect`, equally wide, `spacing` points apart. Main thread. */
void ZRNTileViewsHorizontally(const std::vector<std::shared_ptr<View>>& views, const Rect& rect,
                              float spacing);

/** Sets the charge of every `Kind` in the tree that has subviews of its own, once for each of them. A view
   without subviews keeps its charge: what is weighed are composed controls, not bare ones. */
template <class Kind>
void ZRNSetChargeOnDescendantsOfView(const std::shared_ptr<View>& view, float charge) {
    if (!view) return;
    const auto subviews = view->subviews();
    for (const auto& subview : subviews) {
        ZRNSetChargeOnDescendantsOfView<Kind>(subview, charge);
        if (dynamic_cast<const Kind*>(view.get())) view->setCharge(charge);
    }
}

}  // namespace zornic
