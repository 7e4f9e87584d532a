#include "View Controllers/ZRNTableViewController.h"

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNShared.h"
#include "Utilities/ZRNTableViews.h"
#include "View Controllers/ZRNListAppearance.h"

namespace zornic {

void ZRNTableViewController::didMake() {
    QueryTableViewController::didMake();
    setShouldDeselectImmediately(false);
    _defaultsObservation = NotificationCenter::defaultCenter().observe(
        ApplicationDefaultsDidChangeNotification, ZRNSharedDefaults().get(),
        [weakSelf = weak(this)](const Notification&) {
            mainQueue().async([weakSelf] {
                if (const auto self = weakSelf.lock()) self->defaultsDidChange();
            });
        });
}

std::shared_ptr<View> ZRNTableViewController::preferredFocusedItem() {
    if (const auto& table = tableView()) return table;
    return QueryTableViewController::preferredFocusedItem();
}

bool ZRNTableViewController::shouldScrollToFirstDataSourceSectionOnInitialAppearance() {
    return ZRNHelmoUIMode() != ZRNHelmoUIModeKnob;
}

bool ZRNTableViewController::isPlayerPlaying() const {
    const auto player = ZRNSharedAVPlayer();
    return player && player->isPlaying();
}

bool ZRNTableViewController::_viewControllerWasSelected() {
    return tableView()->_highlightFirstVisibleRowIfAppropriate();
}

std::vector<std::string> ZRNTableViewController::sectionIndexTitlesForTableView(TableView& table) {
    if (_shouldHideIndexTitles) return {};
    return QueryTableViewController::sectionIndexTitlesForTableView(table);
}

bool ZRNTableViewController::tableViewShouldChangeFocusedItemFromRowAtIndexPath(
    TableView& table, const std::shared_ptr<View>& next, const IndexPath& indexPath) {
    return _ZRNTableViewShouldChangeFocusedItemFromRowAtIndexPath(table, next, indexPath);
}

void ZRNTableViewController::viewDidLoad() {
    QueryTableViewController::viewDidLoad();
    tableView()->setShowsVerticalScrollIndicator(false);
    tableView()->setShowsHorizontalScrollIndicator(false);
    tableView()->becomeFirstResponder();
    _itemObservation = NotificationCenter::defaultCenter().observe(
        AVControllerItemChangedNotification, ZRNSharedAVPlayer().get(),
        [this](const Notification& notification) { _itemChanged(notification); });
}

void ZRNTableViewController::viewWillAppear(bool animated) {
    QueryTableViewController::viewWillAppear(animated);
    ZRNUpdateNavigationBarForList(*this, false);
    _nowPlayingButton = ZRNInstallNowPlayingButton(
        *this, [this](const auto& sender) { _ZRN_nowPlayingButtonAction(sender); });
}

void ZRNTableViewController::viewDidAppear(bool animated) {
    QueryTableViewController::viewDidAppear(animated);
    ZRNClearSelectionOnAppearance(*this, tableView(), animated, {});
}

void ZRNTableViewController::viewWillDisappear(bool animated) {
    QueryTableViewController::viewWillDisappear(animated);
    ZRNUpdateNavigationBarForList(*this, false);
}

void ZRNTableViewController::_itemChanged(const Notification& notification) {
    const auto player = std::dynamic_pointer_cast<AVController>(notification.sender);
    if (_nowPlayingButton) _nowPlayingButton->setHidden(!player || !player->currentItem());
}

void ZRNTableViewController::_ZRN_nowPlayingButtonAction(const std::shared_ptr<Control>&) {
    if (auto* navigation = navigationController()) navigation->ZRN_pushNowPlayingViewControllerAnimated(true);
}

void ZRNTableViewController::playFromRowAtIndexPath(const IndexPath& indexPath) {
    const std::uint64_t index = dataSourceIndexForIndexPath(indexPath);
    const auto context = std::dynamic_pointer_cast<QueryPlaybackContext>(
        index == NotFound ? nullptr : queryDataSource()->playbackContextForIndex(index));
    // A song that has just gone from the library starts nothing; its row is about to go too.
    if (context && context->startIndex() != NotFound) play(context);
}

void ZRNTableViewController::play(const std::shared_ptr<PlaybackContext>& context) {
    if (const auto player = ZRNSharedAVPlayer()) player->reloadWithPlaybackContext(context);
    if (auto* navigation = navigationController()) navigation->ZRN_pushNowPlayingViewControllerAnimated(true);
}

void ZRNTableViewController::pushKeepingBar(const std::shared_ptr<ViewController>& next) {
    auto* navigation = navigationController();
    if (!navigation || !next) return;
    next->navigationItem()->setPrompt(navigationItem()->prompt());
    next->navigationItem()->setRightBarButtonItem(navigationItem()->rightBarButtonItem());
    navigation->pushViewController(next, true);
}

}  // namespace zornic
