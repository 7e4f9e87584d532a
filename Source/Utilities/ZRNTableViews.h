#pragma once

#include <memory>

#include "Platform/Toolkit/TableView.h"

namespace zornic {

/** Lets every selected row go. Main thread. */
void ZRNClearTableViewSelection(TableView& tableView, bool animated);

/** Whether the knob may move focus from a row to `next`: to a button only from the first or last row of a
   section, so that turning never jumps out of the middle of a list. No next item, or no row, is no reason to
   refuse. */
bool _ZRNTableViewShouldChangeFocusedItemFromRowAtIndexPath(TableView& tableView,
                                                            const std::shared_ptr<View>& next,
                                                            const IndexPath& indexPath);

}  // namespace zornic
