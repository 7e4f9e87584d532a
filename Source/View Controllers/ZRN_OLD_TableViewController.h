#pragma once

#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/AVController.h"
#include "Platform/Media/MediaQuery.h"
#include "Platform/Toolkit/Control.h"
#include "Platform/Toolkit/TableViewController.h"
#include "View Controllers/ZRNHelmoServiceProvider.h"

namespace zornic {

class ZRNNoContentView;

/** The base of the lists that hold their query, player and service provider themselves and fill their cells
   by hand. Main thread. */
class ZRN_OLD_TableViewController : public TableViewController {
public:
    ZRN_OLD_TableViewController(std::shared_ptr<MediaQuery> query, std::shared_ptr<AVController> player,
                                std::shared_ptr<ZRNHelmoServiceProvider> serviceProvider);
    void didMake() override;

    const std::shared_ptr<MediaQuery>& query() const { return _query; }
    const std::shared_ptr<AVController>& player() const { return _player; }
    const std::shared_ptr<ZRNHelmoServiceProvider>& serviceProvider() const { return _serviceProvider; }
    /** True from the end of its appearing to the beginning of its going. */
    bool viewHasAppeared() const { return _viewHasAppeared; }
    /** Whether the bar is shown even on the bottom screen; false by default. */
    bool alwaysShowNavBar() const { return _alwaysShowNavBar; }
    void setAlwaysShowNavBar(bool shows) { _alwaysShowNavBar = shows; }

    /** Adds the item's cover, or a placeholder without an item, to a row; rows higher than 44 points are of
       two lines. A cover that is not at hand takes the placeholder's place when it is. None without a cell.
     */
    static std::shared_ptr<ImageView> addAlbumArtViewFromItemToCellRowHeight(
        const std::shared_ptr<MediaItem>& item, const std::shared_ptr<TableViewCell>& cell, double rowHeight);
    /** Adds a picture at the left of a row, instead of an earlier one; none without picture or cell. */
    static std::shared_ptr<ImageView> addAlbumArtViewWithImageToCellRowHeight(
        const Image& image, const std::shared_ptr<TableViewCell>& cell, double rowHeight);
    /** The picture that one of these has put into a row; none without. */
    static std::shared_ptr<ImageView> albumArtViewOfCell(TableViewCell& cell);
    /** An idle cell without its former picture, or a new one. */
    std::shared_ptr<TableViewCell> dequeueReusableHelmoCellForTableViewIndexPath(TableView& tableView,
                                                                                 const IndexPath& indexPath);
    /** Whether the list has any row at all. */
    bool hasRowsToDisplay();
    /** Asks for the rows anew, and says so where there are none. */
    void refreshRows();
    /** The screen to push for a row; none: nothing follows. */
    virtual std::shared_ptr<ViewController> viewControllerForRowAtIndexPath(const IndexPath&) {
        return nullptr;
    }

    /** What the rows stand for: the query's collections, where a list shows nothing else. There must be a
       query. */
    virtual std::shared_ptr<const MediaEntityList> entitiesOfRows() const { return _query->collections(); }
    /** Index among these of a row, and where the row of an index stands. */
    virtual std::uint64_t indexOfRow(const IndexPath& indexPath) const { return indexPath.row(); }
    virtual IndexPath indexPathOfIndex(std::uint64_t index) const { return IndexPath::forRow(index, 0); }

    IndexPath tableViewIndexPathForSubject(TableView& tableView, const TableRowSubject& subject) override;
    std::uint64_t tableViewNumberOfRowsInSection(TableView& tableView, std::uint64_t section) override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;
    bool tableViewShouldChangeFocusedItemFromRowAtIndexPath(TableView& tableView,
                                                            const std::shared_ptr<View>& next,
                                                            const IndexPath& indexPath) override;
    std::shared_ptr<View> preferredFocusedItem() override;
    bool _viewControllerWasSelected() override;
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;

    void _itemChanged(const Notification& notification);
    /** Pushes Now Playing. */
    void _nowPlayingButtonTapped(const std::shared_ptr<Control>& sender);
    /** Presents Now Playing over the stack; dropped while the list is not on view or something is already
     * presented. */
    void _presentNowPlayingViewController();
    void _updateNowPlayingVisibility();

private:
    void updateNoContentView();

    const std::shared_ptr<MediaQuery> _query;
    const std::shared_ptr<AVController> _player;
    const std::shared_ptr<ZRNHelmoServiceProvider> _serviceProvider;
    bool _viewHasAppeared = false, _alwaysShowNavBar = false;
    std::shared_ptr<View> _nowPlayingButton;
    std::shared_ptr<ZRNNoContentView> _noContentView;
    Observation _itemObservation;
};

}  // namespace zornic
