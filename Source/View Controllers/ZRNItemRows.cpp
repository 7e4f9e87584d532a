#include "View Controllers/ZRNItemRows.h"

#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/ZRNTableViews.h"
#include "View Controllers/ZRNMusicNowPlayingViewController.h"

namespace zornic {

std::shared_ptr<MediaItem> ZRNItemOfListRow(const ZRN_OLD_TableViewController& list,
                                            const IndexPath& indexPath) {
    if (!list.query()) return nullptr;
    auto item = std::dynamic_pointer_cast<MediaItem>(list.query()->items()->entityAtIndex(indexPath.row()));
    using namespace MediaItemProperty;
    if (item) item->valuesForProperties({Title, AlbumTrackNumber, PlaybackDuration, ReleaseDate});
    return item;
}

std::shared_ptr<TableViewCell> ZRNCellForItemRow(
    ZRN_OLD_TableViewController& list, TableView& tableView, const IndexPath& indexPath,
    const std::function<ZRNRowTexts(const MediaItem& item)>& texts) {
    const auto cell = list.dequeueReusableHelmoCellForTableViewIndexPath(tableView, indexPath);
    const auto item = ZRNItemOfListRow(list, indexPath);
    const ZRNRowTexts lines = item ? texts(*item) : ZRNRowTexts();
    cell->textLabel()->setText(lines.title);
    cell->detailTextLabel()->setText(lines.detail);
    return cell;
}

std::int64_t ZRNWholeSeconds(double seconds) { return Value(seconds).asInteger(); }

void ZRNPresentNowPlayingOverList(ZRN_OLD_TableViewController& list,
                                  const std::shared_ptr<ZRNMusicNowPlayingViewController>& nowPlaying) {
    if (!nowPlaying) return ZRNClearTableViewSelection(*list.tableView(), true);
    if (auto* navigation = list.navigationController())
        navigation->presentViewControllerWithTransition(nowPlaying->newPresentationNavigationController(),
                                                        PresentationTransition::Rise);
}

void ZRNPlayItemsOfListFromRow(ZRN_OLD_TableViewController& list, const IndexPath& indexPath) {
    const auto self = strong(&list);
    ZRNPresentNowPlayingOverList(list,
                                 ZRNMusicNowPlayingViewController::withQueryStartingAtIndex(
                                     list.query(), indexPath.row(), list.player(), list.serviceProvider()));
}

}  // namespace zornic
