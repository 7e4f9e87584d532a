#pragma once

#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace zornic {

/** The episodes of a collection of lectures, each with its length; a chosen one plays the list from there.
   Main thread. */
class ZRNSonvaleUEpisodesTableViewController : public ZRN_OLD_TableViewController {
public:
    using ZRN_OLD_TableViewController::ZRN_OLD_TableViewController;
    std::shared_ptr<const MediaEntityList> entitiesOfRows() const override { return query()->items(); }
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;
};

}  // namespace zornic
