#pragma once

#include <map>

#include "Platform/Media/MediaPlaylist.h"
#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace zornic {

/** The mixes that were made from the library, each with the artists it is based on and up to four covers in
   one picture; a chosen mix plays. Main thread. */
class ZRNBrivoMixesViewController : public ZRN_OLD_TableViewController {
public:
    using ZRN_OLD_TableViewController::ZRN_OLD_TableViewController;

    /** The mix of a row; none when it has just gone from the library. */
    std::shared_ptr<MediaPlaylist> _playlistAtIndexPath(const IndexPath& indexPath) const;
    /** The picture of each row that had one already; kept as long as the screen. */
    const std::map<IndexPath, Image>& brivoImages() const { return _brivoImages; }

    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;

private:
    void showArtwork(const std::shared_ptr<MediaPlaylist>& playlist,
                     const std::shared_ptr<TableViewCell>& cell, const IndexPath& indexPath);

    std::map<IndexPath, Image> _brivoImages;
};

}  // namespace zornic
