#include "View Controllers/ZRNAudiobookPartsTableViewController.h"

#include "Platform/Foundation/StringFormat.h"
#include "Platform/LibraryKit/PlayerStrings.h"
#include "Utilities/ZRNHelmoBundle.h"
#include "View Controllers/ZRNItemRows.h"

namespace zornic {

void ZRNAudiobookPartsTableViewController::didMake() {
    ZRN_OLD_TableViewController::didMake();
    if (!query()) return;
    // Where the tags leave out the count, or contradict it, the numbers tell.
    _numberOfParts =
        _formatter.stringFromNumber(std::max(query()->maxAggregate(MediaItemProperty::AlbumTrackCount),
                                             query()->maxAggregate(MediaItemProperty::AlbumTrackNumber)));
}

std::uint64_t ZRNAudiobookPartsTableViewController::tableViewNumberOfRowsInSection(TableView&,
                                                                                   std::uint64_t) {
    return query() ? query()->_countOfItems() : 0;
}

std::string ZRNAudiobookPartsTableViewController::titleOfPart(const MediaItem& item) const {
    const Value number = item.valueForProperty(MediaItemProperty::AlbumTrackNumber);
    if (number.asInteger() == 0) return item.title();
    const std::string part = _formatter.stringFromNumber(number.asNumber());
    const auto chapters = item.chaptersOfType(MediaChapterType::Chapter);
    if (chapters.empty()) return formatted(ZRNLocalizedString("Part %@ of %@"), {part, _numberOfParts});
    const auto shown = [this](const MediaChapter& chapter) {
        return _formatter.stringFromNumber(static_cast<double>(chapter.indexInChaptersWithSameType) + 1);
    };
    if (chapters.size() == 1)
        return formatted(ZRNLocalizedString("Part %@ of %@: Chapter %@"),
                         {part, _numberOfParts, shown(chapters.front())});
    return formatted(ZRNLocalizedString("Part %@ of %@: Chapters %@ to %@"),
                     {part, _numberOfParts, shown(chapters.front()), shown(chapters.back())});
}

std::string ZRNAudiobookPartsTableViewController::lengthOfPart(const MediaItem& item) {
    const double duration = item.playbackDuration();
    const auto bookmark = item.bookmarkTime();
    if (!bookmark || !(duration > *bookmark))
        return progressString(ZRNWholeSeconds(duration), ProgressKind::Length);
    return formatted(ZRNLocalizedString("%@ remaining"),
                     {progressString(ZRNWholeSeconds(duration - *bookmark), ProgressKind::Time)});
}

std::shared_ptr<TableViewCell> ZRNAudiobookPartsTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    return ZRNCellForItemRow(*this, table, indexPath, [this](const MediaItem& item) {
        return ZRNRowTexts{titleOfPart(item), lengthOfPart(item)};
    });
}

void ZRNAudiobookPartsTableViewController::tableViewDidSelectRowAtIndexPath(TableView&,
                                                                            const IndexPath& indexPath) {
    ZRNPlayItemsOfListFromRow(*this, indexPath);
}

void ZRNAudiobookPartsTableViewController::viewWillAppear(bool animated) {
    ZRN_OLD_TableViewController::viewWillAppear(animated);
    if (const auto& table = tableView()) table->reloadRowsAtIndexPaths(table->indexPathsForVisibleRows());
}

}  // namespace zornic
