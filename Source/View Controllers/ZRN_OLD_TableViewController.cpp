#include "View Controllers/ZRN_OLD_TableViewController.h"

#include "Platform/Media/ArtworkCatalog.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/MediaItemHelmo.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNRowMetrics.h"
#include "Utilities/ZRNTableViews.h"
#include "View Controllers/ZRNListAppearance.h"
#include "View Controllers/ZRNMusicNowPlayingViewController.h"
#include "View Controllers/ZRNNowPlayingNavigationController.h"
#include "Views/ZRNNoContentView.h"
#include "Views/ZRNTableView.h"
#include "Views/_ZRNTableViewCell.h"

namespace zornic {
namespace {

constexpr int albumArtTag = 500;
constexpr double singleLineRowHeight = 44;

void removeAlbumArt(TableViewCell& cell) {
    if (const auto art = ZRN_OLD_TableViewController::albumArtViewOfCell(cell)) art->removeFromSuperview();
}

/** The picture that is not at hand yet; it never arrives in a row that has got another one. */
void loadAlbumArt(const MediaItem& item, const std::shared_ptr<ImageView>& art) {
    const auto catalog = item.artworkCatalog();
    if (!catalog) return;
    const auto screen = ZRNHelmoScreen();
    catalog->setFittingSize(ZRNRowArtworkFrame().size);
    catalog->setDestinationScale(screen ? screen->scale() : 1);
    catalog->setDestination(art, [weakArt = std::weak_ptr(art)](const Image& image) {
        const auto destination = weakArt.lock();
        if (destination && image) destination->setImage(image);
    });
}

}  // namespace

ZRN_OLD_TableViewController::ZRN_OLD_TableViewController(
    std::shared_ptr<MediaQuery> query, std::shared_ptr<AVController> player,
    std::shared_ptr<ZRNHelmoServiceProvider> serviceProvider)
    : _query(std::move(query)), _player(std::move(player)), _serviceProvider(std::move(serviceProvider)) {}

void ZRN_OLD_TableViewController::didMake() {
    TableViewController::didMake();
    _setFilteredDataType(1);
    setClearsSelectionOnViewWillAppear(true);
}

std::shared_ptr<ImageView> ZRN_OLD_TableViewController::addAlbumArtViewFromItemToCellRowHeight(
    const std::shared_ptr<MediaItem>& item, const std::shared_ptr<TableViewCell>& cell, double rowHeight) {
    const bool doubleLine = rowHeight > singleLineRowHeight;
    const Image image =
        item ? albumImageWithFallbackForSizeDoubleLineRow(*item, ZRNRowArtworkFrame().size, doubleLine)
             : ZRNAlbumPlaceholderImageWithStyle(doubleLine ? 1 : 0);
    const auto art = addAlbumArtViewWithImageToCellRowHeight(image, cell, rowHeight);
    if (art && item) loadAlbumArt(*item, art);
    return art;
}

std::shared_ptr<ImageView> ZRN_OLD_TableViewController::addAlbumArtViewWithImageToCellRowHeight(
    const Image& image, const std::shared_ptr<TableViewCell>& cell, double) {
    if (!image || !cell) return nullptr;
    removeAlbumArt(*cell);
    const auto art = make<ImageView>(image);
    art->setTag(albumArtTag);
    art->setFrame(ZRNRowArtworkFrame());
    art->setContentMode(ContentMode::AspectFit);
    cell->contentView()->addSubview(art);
    EdgeInsets inset = cell->separatorInset();
    inset.left = art->frame().maxX() + ZRNGapAfterRowArtwork;
    cell->setSeparatorInset(inset);
    return art;
}

std::shared_ptr<ImageView> ZRN_OLD_TableViewController::albumArtViewOfCell(TableViewCell& cell) {
    return std::dynamic_pointer_cast<ImageView>(cell.viewWithTag(albumArtTag));
}

std::shared_ptr<TableViewCell> ZRN_OLD_TableViewController::dequeueReusableHelmoCellForTableViewIndexPath(
    TableView& table, const IndexPath& indexPath) {
    const auto cell = table.dequeueReusableCellWithIdentifier(className());
    const std::uint64_t index = indexOfRow(indexPath);
    if (_query) cell->setSubject({entitiesOfRows()->entityAtIndex(index), index});
    removeAlbumArt(*cell);
    cell->setIndentationLevel(0);
    return cell;
}

bool ZRN_OLD_TableViewController::hasRowsToDisplay() {
    const auto& table = tableView();
    const std::uint64_t sections = numberOfSectionsInTableView(*table);
    for (std::uint64_t section = 0; section < sections; ++section)
        if (tableViewNumberOfRowsInSection(*table, section) > 0) return true;
    return false;
}

void ZRN_OLD_TableViewController::refreshRows() {
    tableView()->reloadDataKeepingPlace();
    updateNoContentView();
}

void ZRN_OLD_TableViewController::updateNoContentView() {
    if (hasRowsToDisplay() == !_noContentView) return;
    if (_noContentView) {
        _noContentView->removeFromSuperview();
        _noContentView = nullptr;
        return;
    }
    _noContentView = make<ZRNNoContentView>(Rect());
    _noContentView->setTranslatesAutoresizingMaskIntoConstraints(false);
    view()->addSubview(_noContentView);
    _noContentView->attachEdges(*view(), AllEdges, {});
}

std::uint64_t ZRN_OLD_TableViewController::tableViewNumberOfRowsInSection(TableView&, std::uint64_t) {
    return _query ? _query->_countOfCollections() : 0;
}

IndexPath ZRN_OLD_TableViewController::tableViewIndexPathForSubject(TableView&,
                                                                    const TableRowSubject& subject) {
    const auto entity = std::dynamic_pointer_cast<MediaEntity>(subject.object);
    const std::uint64_t index =
        _query && entity ? indexOfEntityNear(*entitiesOfRows(), entity, subject.index) : NotFound;
    return index == NotFound ? IndexPath() : indexPathOfIndex(index);
}

void ZRN_OLD_TableViewController::tableViewDidSelectRowAtIndexPath(TableView&, const IndexPath& indexPath) {
    const auto next = viewControllerForRowAtIndexPath(indexPath);
    if (auto* navigation = navigationController(); navigation && next)
        navigation->pushViewController(next, true);
}

bool ZRN_OLD_TableViewController::tableViewShouldChangeFocusedItemFromRowAtIndexPath(
    TableView& table, const std::shared_ptr<View>& next, const IndexPath& indexPath) {
    return _ZRNTableViewShouldChangeFocusedItemFromRowAtIndexPath(table, next, indexPath);
}

std::shared_ptr<View> ZRN_OLD_TableViewController::preferredFocusedItem() {
    if (const auto& table = tableView()) return table;
    return TableViewController::preferredFocusedItem();
}

bool ZRN_OLD_TableViewController::_viewControllerWasSelected() {
    return tableView()->_highlightFirstVisibleRowIfAppropriate();
}

void ZRN_OLD_TableViewController::viewDidLoad() {
    TableViewController::viewDidLoad();
    const auto& table = tableView();
    table->setRowHeight(singleLineRowHeight);
    table->setSeparatorInset({0, 12, 0, 0});
    table->registerCellClass(className(), [](const std::string& identifier) {
        return make<_ZRNTableViewCell>(TableViewCellStyle::Default, identifier);
    });
    table->setShowsVerticalScrollIndicator(false);
    table->setShowsHorizontalScrollIndicator(false);
}

void ZRN_OLD_TableViewController::viewWillAppear(bool animated) {
    TableViewController::viewWillAppear(animated);
    updateNoContentView();
    ZRNUpdateNavigationBarForList(*this, _alwaysShowNavBar);
    _nowPlayingButton =
        ZRNInstallNowPlayingButton(*this, [this](const auto& sender) { _nowPlayingButtonTapped(sender); });
    _updateNowPlayingVisibility();
}

void ZRN_OLD_TableViewController::viewDidAppear(bool animated) {
    TableViewController::viewDidAppear(animated);
    _itemObservation = NotificationCenter::defaultCenter().observe(
        AVControllerItemChangedNotification, _player.get(),
        [this](const Notification& notification) { _itemChanged(notification); });
    ZRNClearSelectionOnAppearance(*this, tableView(), animated, [this] { _viewHasAppeared = true; });
    _viewHasAppeared = true;
}

void ZRN_OLD_TableViewController::viewWillDisappear(bool animated) {
    TableViewController::viewWillDisappear(animated);
    ZRNUpdateNavigationBarForList(*this, _alwaysShowNavBar);
    _itemObservation.reset();
    _viewHasAppeared = false;
}

void ZRN_OLD_TableViewController::_itemChanged(const Notification&) { _updateNowPlayingVisibility(); }

void ZRN_OLD_TableViewController::_updateNowPlayingVisibility() {
    if (_nowPlayingButton) _nowPlayingButton->setHidden(!_player || !_player->currentItem());
}

void ZRN_OLD_TableViewController::_nowPlayingButtonTapped(const std::shared_ptr<Control>&) {
    auto* navigation = navigationController();
    if (!navigation) return;
    const auto screen = ZRNMusicNowPlayingViewController::withPlayer(_player, _serviceProvider, false);
    navigation->pushViewController(screen, true);
}

void ZRN_OLD_TableViewController::_presentNowPlayingViewController() {
    auto* navigation = navigationController();
    if (!_viewHasAppeared || !navigation || navigation->presentedViewController()) return;
    const auto screen = ZRNMusicNowPlayingViewController::withPlayer(_player, _serviceProvider, false);
    navigation->presentViewControllerWithTransition(screen->newPresentationNavigationController(),
                                                    PresentationTransition::Rise);
}

}  // namespace zornic
