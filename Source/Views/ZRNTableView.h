#pragma once

#include "Platform/Toolkit/TableView.h"

namespace zornic {

/** The library's list: it takes the knob, and shows section headers only where a screen wants them. */
class ZRNTableView : public TableView {
public:
    using TableView::TableView;
    bool shouldShowHeadersAndFooters() const { return _headersAndFootersShown; }
    /** False by default. */
    void setShouldShowHeadersAndFooters(bool shows) { _headersAndFootersShown = shows; }
    bool canBecomeFirstResponder() const override { return true; }
    bool _shouldShowHeadersAndFooters() const override { return _headersAndFootersShown; }

private:
    bool _headersAndFootersShown = false;
};

}  // namespace zornic
