#pragma once

#include "View Controllers/ZRNTableViewController.h"

namespace zornic {

/** The list of songs: a chosen song plays the list from there. With more than one song it can be shuffled. */
class ZRNSongsViewController : public ZRNTableViewController {
public:
    using ZRNTableViewController::ZRNTableViewController;
    std::vector<const BaseActionCellConfiguration*> actionCellConfigurationClasses() const override;
    bool shouldShowActionCellConfiguration(const BaseActionCellConfiguration& configuration) override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;
};

}  // namespace zornic
