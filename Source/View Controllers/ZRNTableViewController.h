#pragma once

#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Platform/Toolkit/Control.h"
#include "Views/ZRNTableView.h"

namespace zornic {

/** The base of the library's lists that are driven by a data source. Its bar has the Now Playing button at
   the right and is hidden on the bottom screen of a stack; the knob leaves its rows only at either end of a
   section. Main thread. */
class ZRNTableViewController : public QueryTableViewController {
public:
    using QueryTableViewController::QueryTableViewController;
    void didMake() override;

    /** Whether the index bar is left out; false by default. */
    bool shouldHideIndexTitles() const { return _shouldHideIndexTitles; }
    void setShouldHideIndexTitles(bool hides) { _shouldHideIndexTitles = hides; }

    std::shared_ptr<TableView> _tableViewClass() override { return make<ZRNTableView>(); }
    std::shared_ptr<View> preferredFocusedItem() override;
    bool shouldScrollToFirstDataSourceSectionOnInitialAppearance() override;
    bool isPlayerPlaying() const override;
    bool _viewControllerWasSelected() override;
    std::vector<std::string> sectionIndexTitlesForTableView(TableView& tableView) override;
    bool tableViewShouldChangeFocusedItemFromRowAtIndexPath(TableView& tableView,
                                                            const std::shared_ptr<View>& next,
                                                            const IndexPath& indexPath) override;
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;

    /** The player's item changed: the button is there while there is one. */
    void _itemChanged(const Notification& notification);
    /** Shows Now Playing. */
    void _ZRN_nowPlayingButtonAction(const std::shared_ptr<Control>& sender);

protected:
    /** Plays the list from a row and shows Now Playing; nothing for an action row, nor for a row whose item
       has gone. */
    void playFromRowAtIndexPath(const IndexPath& indexPath);
    /** Plays it on the shared player and shows Now Playing. */
    void play(const std::shared_ptr<PlaybackContext>& context);
    /** Shows a list that this one leads to, with this one's prompt and Now Playing button from the start. */
    void pushKeepingBar(const std::shared_ptr<ViewController>& next);

private:
    std::shared_ptr<View> _nowPlayingButton;
    bool _shouldHideIndexTitles = false;
    Observation _itemObservation, _defaultsObservation;
};

}  // namespace zornic
