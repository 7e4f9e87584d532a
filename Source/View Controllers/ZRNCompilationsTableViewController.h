#pragma once

#include "View Controllers/ZRNSectionedTableViewController.h"

namespace zornic {

/** The albums of several artists; each leads to its songs. Main thread. */
class ZRNCompilationsTableViewController : public ZRNSectionedTableViewController {
public:
    using ZRNSectionedTableViewController::ZRNSectionedTableViewController;
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    std::shared_ptr<ViewController> viewControllerForRowAtIndexPath(const IndexPath& indexPath) override;
};

}  // namespace zornic
