#pragma once

#include "View Controllers/ZRNTableViewController.h"

namespace zornic {

class MediaItemCollection;

/** The list of genres: one leads to its artists, or, when it has only one, to the artist's albums in it. Main
 * thread. */
class ZRNGenresViewController : public ZRNTableViewController {
public:
    using ZRNTableViewController::ZRNTableViewController;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;

private:
    void showOnlyArtistOfGenre(const MediaItemCollection& genre, MediaPredicate isOfGenre);
    void showArtistsOfGenre(const MediaItemCollection& genre, MediaPredicate isOfGenre);
};

}  // namespace zornic
