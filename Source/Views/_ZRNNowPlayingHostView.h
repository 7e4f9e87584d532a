#pragma once

#include <vector>

#include "Platform/Toolkit/View.h"

namespace zornic {

/** Root view of the Now Playing screen, with the views that answer for it. Main thread. */
class _ZRNNowPlayingHostView : public View {
public:
    using View::View;
    const std::vector<std::shared_ptr<View>>& responderViews() const { return _responderViews; }
    void setResponderViews(std::vector<std::shared_ptr<View>> views) { _responderViews = std::move(views); }

private:
    std::vector<std::shared_ptr<View>> _responderViews;
};

}  // namespace zornic
