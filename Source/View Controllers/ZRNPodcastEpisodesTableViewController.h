#pragma once

#include "Platform/Foundation/LocaleServices.h"
#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace zornic {

/** The episodes of a podcast, each with the day of its release; a chosen one plays the list from there. Main
   thread. */
class ZRNPodcastEpisodesTableViewController : public ZRN_OLD_TableViewController {
public:
    using ZRN_OLD_TableViewController::ZRN_OLD_TableViewController;
    std::shared_ptr<const MediaEntityList> entitiesOfRows() const override { return query()->items(); }
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;

private:
    const DateFormatter _formatter{DateStyle::Long, DateStyle::None};
};

}  // namespace zornic
