#pragma once

#include "View Controllers/ZRNSectionedTableViewController.h"

namespace zornic {

/** The podcasts; each leads to its episodes. Main thread. */
class ZRNPodcastsTableViewController : public ZRNSectionedTableViewController {
public:
    using ZRNSectionedTableViewController::ZRNSectionedTableViewController;
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    std::shared_ptr<ViewController> viewControllerForRowAtIndexPath(const IndexPath& indexPath) override;
};

}  // namespace zornic
