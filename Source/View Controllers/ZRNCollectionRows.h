#pragma once

#include <memory>
#include <string>

#include "View Controllers/ZRNSectionedTableViewController.h"

namespace zornic {

/** What the sectioned lists of collections have in common. Main thread. */

/** The item that stands for the collection of a row, with what a row shows of it read in one go; none when it
   has just gone from the library. */
std::shared_ptr<MediaItem> ZRNItemOfCollectionRow(const ZRNSectionedTableViewController& list,
                                                  const IndexPath& indexPath);

/** An idle cell of the list with two lines and the item's cover, and with a disclosure indicator unless the
   list is sectioned, for that would stand under the index bar. */
std::shared_ptr<TableViewCell> ZRNCellForCollectionRow(ZRNSectionedTableViewController& list,
                                                       TableView& tableView, const IndexPath& indexPath,
                                                       const std::shared_ptr<MediaItem>& item,
                                                       const std::string& title, const std::string& detail);

/** A new query with the filters of `query` and one more: for the item's own value of `property`. */
std::shared_ptr<MediaQuery> ZRNQueryNarrowedToItem(const MediaQuery& query, const MediaItem& item,
                                                   const char* property, MediaGrouping grouping);

}  // namespace zornic
