#include "View Controllers/ZRNBrivoMixesViewController.h"

#include "Platform/Foundation/StringFormat.h"
#include "Platform/Foundation/TextTools.h"
#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNTileArtwork.h"
#include "View Controllers/ZRNItemRows.h"
#include "View Controllers/ZRNMusicNowPlayingViewController.h"

namespace zornic {
namespace {

constexpr std::size_t mostPictures = 4;
constexpr Size tileSize{9, 9};
constexpr double artworkRowHeight = 44;
/** A row shows the picture at twice its size. */
constexpr double enlargement = 2;

std::string artistsText(const MediaPlaylist& playlist) {
    const auto artists = playlist.representativeArtists();
    if (artists.empty()) return {};
    return formatted(ZRNLocalizedString("BRIVO_MIX_BASED_ON_MUSIC_BY"),
                     {ZRNLocalizedString("BRIVO_MIX_BASED_ON"),
                      joined(artists, ZRNLocalizedString("BRIVO_MIXES_LIST_SEPARATOR"))});
}

}  // namespace

std::shared_ptr<MediaPlaylist> ZRNBrivoMixesViewController::_playlistAtIndexPath(
    const IndexPath& indexPath) const {
    if (!query()) return nullptr;
    return std::dynamic_pointer_cast<MediaPlaylist>(query()->collections()->entityAtIndex(indexPath.row()));
}

std::shared_ptr<TableViewCell> ZRNBrivoMixesViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    const auto cell = dequeueReusableHelmoCellForTableViewIndexPath(table, indexPath);
    const auto playlist = _playlistAtIndexPath(indexPath);
    cell->textLabel()->setText(playlist ? playlist->name() : "");
    cell->detailTextLabel()->setText(playlist ? artistsText(*playlist) : "");
    showArtwork(playlist, cell, indexPath);
    return cell;
}

void ZRNBrivoMixesViewController::showArtwork(const std::shared_ptr<MediaPlaylist>& playlist,
                                              const std::shared_ptr<TableViewCell>& cell,
                                              const IndexPath& indexPath) {
    if (const auto known = _brivoImages.find(indexPath); known != _brivoImages.end()) {
        addAlbumArtViewWithImageToCellRowHeight(known->second, cell, artworkRowHeight);
        return;
    }
    if (!playlist) return;
    const auto screen = ZRNHelmoScreen();
    const auto catalogs = playlist->artworkCatalogs(mostPictures);
    for (const auto& catalog : catalogs)
        catalog->setDestinationScale(enlargement * (screen ? screen->scale() : 1));
    ZRNTileArtworkFromCatalogs(
        catalogs, tileSize, className(), strong<Object>(this),
        [weakSelf = weak(this), weakCell = std::weak_ptr(cell), indexPath](const Image& image) {
            const auto self = weakSelf.lock();
            if (!self) return;
            addAlbumArtViewWithImageToCellRowHeight(image, weakCell.lock(), artworkRowHeight);
            if (image) self->_brivoImages[indexPath] = image;
        });
}

void ZRNBrivoMixesViewController::tableViewDidSelectRowAtIndexPath(TableView&, const IndexPath& indexPath) {
    const auto self = strong(this);
    const auto playlist = _playlistAtIndexPath(indexPath);
    // A mix that has just gone from the library has nothing to play; its row is about to go too.
    ZRNPresentNowPlayingOverList(*this, playlist ? ZRNMusicNowPlayingViewController::withBrivoMixPlaylist(
                                                       playlist, player(), serviceProvider())
                                                 : nullptr);
}

}  // namespace zornic
