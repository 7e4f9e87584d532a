#include "Utilities/ZRNTableViews.h"

#include "Platform/Toolkit/Control.h"

namespace zornic {

void ZRNClearTableViewSelection(TableView& tableView, bool animated) {
    const auto selected = tableView.indexPathsForSelectedRows();
    for (const auto& indexPath : selected) tableView.deselectRowAtIndexPath(indexPath, animated);
}

bool _ZRNTableViewShouldChangeFocusedItemFromRowAtIndexPath(TableView& tableView,
                                                            const std::shared_ptr<View>& next,
                                                            const IndexPath& indexPath) {
    if (!std::dynamic_pointer_cast<Control>(next) || indexPath.length() < 2) return true;
    const std::uint64_t rows = tableView.numberOfRowsInSection(indexPath.section());
    return indexPath.row() == 0 || indexPath.row() + 1 == rows;
}

}  // namespace zornic
