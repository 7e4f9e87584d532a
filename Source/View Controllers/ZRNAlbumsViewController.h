#pragma once

#include "View Controllers/ZRNTableViewController.h"

namespace zornic {

/** The list of albums: one leads to its tracks. Main thread. */
class ZRNAlbumsViewController : public ZRNTableViewController {
public:
    using ZRNTableViewController::ZRNTableViewController;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;
};

}  // namespace zornic
