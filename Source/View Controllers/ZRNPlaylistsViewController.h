#pragma once

#include "Platform/Media/MediaPlaylist.h"
#include "View Controllers/ZRNTableViewController.h"

namespace zornic {

/** The playlists and folders of one level: a folder opens its contents, a playlist its songs in its own
   order, and what holds nothing says so. Main thread. */
class ZRNPlaylistsViewController : public ZRNTableViewController {
public:
    using ZRNTableViewController::ZRNTableViewController;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;
    /** Never an index bar. */
    std::vector<std::string> sectionIndexTitlesForTableView(TableView&) override { return {}; }

private:
    void pushEmptyScreen(const std::string& title);
    void pushContents(const MediaPlaylist& playlist);
};

}  // namespace zornic
