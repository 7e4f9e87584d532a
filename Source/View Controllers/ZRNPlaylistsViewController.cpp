#include "View Controllers/ZRNPlaylistsViewController.h"

#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/MediaQueryZRNAdditions.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"
#include "Views/ZRNNoContentView.h"

namespace zornic {
namespace {

std::shared_ptr<MediaQuery> queryWithFilter(const char* property, PersistentID identifier,
                                            MediaGrouping grouping) {
    auto query = ZRN_queryWithFilterPredicates({MediaPredicate::property(property, identifier)});
    query->setGroupingType(grouping);
    return query;
}

/** The screen of a folder's contents or a playlist's songs, without its texts. */
std::shared_ptr<ViewController> screenForPlaylist(const MediaPlaylist& playlist) {
    const auto identifier = playlist.persistentID();
    auto& registry = ScreenRegistry::shared();
    if (playlist.isFolder())
        return registry.viewControllerForIdentifierQuery(
            ZRNPlaylistsViewControllerIdentifier,
            queryWithFilter(MediaPlaylistProperty::ParentPersistentID, identifier, MediaGrouping::Playlist));
    auto screen = registry.viewControllerForIdentifierQuery(
        ZRNSongsViewControllerIdentifier,
        queryWithFilter(MediaPlaylistProperty::PersistentID, identifier, MediaGrouping::Title));
    if (const auto songs = std::dynamic_pointer_cast<ZRNTableViewController>(screen))
        songs->setShouldHideIndexTitles(true);
    return screen;
}

}  // namespace

void ZRNPlaylistsViewController::tableViewDidSelectRowAtIndexPath(TableView& table,
                                                                  const IndexPath& indexPath) {
    const auto self = strong(this);
    const std::uint64_t index = dataSourceIndexForIndexPath(indexPath);
    const auto playlist = std::dynamic_pointer_cast<MediaPlaylist>(
        index == NotFound ? nullptr : queryDataSource()->entityAtIndex(index));
    if (playlist && playlist->items()->count() == 0) return pushEmptyScreen(playlist->name());
    if (playlist) pushContents(*playlist);
    ZRNTableViewController::tableViewDidSelectRowAtIndexPath(table, indexPath);
}

void ZRNPlaylistsViewController::pushEmptyScreen(const std::string& title) {
    const auto screen = make<ViewController>();
    screen->setView(make<ZRNNoContentView>(Rect()));
    screen->setTitle(title);
    if (auto* navigation = navigationController()) navigation->pushViewController(screen, true);
}

void ZRNPlaylistsViewController::pushContents(const MediaPlaylist& playlist) {
    const auto screen = screenForPlaylist(playlist);
    if (screen) screen->setTitle(playlist.name());
    pushKeepingBar(screen);
}

}  // namespace zornic
