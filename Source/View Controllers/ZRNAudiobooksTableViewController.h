#pragma once

#include "View Controllers/ZRNSectionedTableViewController.h"

namespace zornic {

/** The audiobooks; each leads to its parts. Main thread. */
class ZRNAudiobooksTableViewController : public ZRNSectionedTableViewController {
public:
    using ZRNSectionedTableViewController::ZRNSectionedTableViewController;
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    std::shared_ptr<ViewController> viewControllerForRowAtIndexPath(const IndexPath& indexPath) override;
};

}  // namespace zornic
