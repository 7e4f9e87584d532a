#pragma once

#include <functional>
#include <memory>
#include <string>

#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace zornic {

class ZRNMusicNowPlayingViewController;

/** The item of a row, with what a row shows of it read in one go; none when it has just gone from the
   library. Main thread, as all of these. */
std::shared_ptr<MediaItem> ZRNItemOfListRow(const ZRN_OLD_TableViewController& list,
                                            const IndexPath& indexPath);

/** The two lines of a row. */
struct ZRNRowTexts {
    std::string title, detail;
};
/** An idle cell of the list with what `texts` says of the row's item; empty lines for one that has just gone.
 */
std::shared_ptr<TableViewCell> ZRNCellForItemRow(
    ZRN_OLD_TableViewController& list, TableView& tableView, const IndexPath& indexPath,
    const std::function<ZRNRowTexts(const MediaItem& item)>& texts);

/** Whole seconds of a time, cut toward zero. */
std::int64_t ZRNWholeSeconds(double seconds);

/** Presents Now Playing over the list's stack once a row has started playback; without such a screen the row
   is let go. */
void ZRNPresentNowPlayingOverList(ZRN_OLD_TableViewController& list,
                                  const std::shared_ptr<ZRNMusicNowPlayingViewController>& nowPlaying);

/** Plays the items of the list's query from a row on and presents Now Playing. */
void ZRNPlayItemsOfListFromRow(ZRN_OLD_TableViewController& list, const IndexPath& indexPath);

}  // namespace zornic
