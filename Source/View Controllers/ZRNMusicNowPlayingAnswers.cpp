#include "Platform/LibraryKit/PlayerStrings.h"
#include "Platform/Media/MediaLibrary.h"
#include "Platform/Media/MediaPlaylist.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNShared.h"
#include "Utilities/ZRNStrings.h"
#include "View Controllers/ZRNMusicNowPlayingViewController.h"

/** What the music screen says to its body, and does for it. */
namespace zornic {
namespace {

constexpr std::int64_t driversToggle = 2;

}  // namespace

// Data source

std::string ZRNMusicNowPlayingViewController::artistTextForNowPlayingController(Child&) {
    return _nowPlayingArtist;
}

std::string ZRNMusicNowPlayingViewController::albumTextForNowPlayingController(Child&) {
    return _nowPlayingAlbum;
}

std::string ZRNMusicNowPlayingViewController::titleForNowPlayingController(Child&) {
    return _nowPlayingTitle;
}

Image ZRNMusicNowPlayingViewController::backgroundArtForNowPlayingController(Child&) {
    return _nowPlayingAlbumArt;
}

bool ZRNMusicNowPlayingViewController::nowPlayingViewControllerIsShowingExplicitTrack(Child&) {
    return _isExplicitTrack;
}

double ZRNMusicNowPlayingViewController::playbackDurationForNowPlayingViewControllerWithElapsedTime(
    Child&, double& elapsed) {
    if (!_player) return 0;
    elapsed = _player->currentTime().count();
    return _player->durationOfCurrentItemIfAvailable().count();
}

bool ZRNMusicNowPlayingViewController::nowPlayingViewControllerIsPlaying(Child&) {
    return _player && _player->shouldDisplayAsPlaying();
}

std::optional<std::uint64_t> ZRNMusicNowPlayingViewController::shuffleTypeForNowPlayingViewController(
    Child&) {
    return _player ? static_cast<std::uint64_t>(_player->activeShuffleType()) : 0;
}

std::optional<std::string> ZRNMusicNowPlayingViewController::shuffleStringForNowPlayingViewController(
    Child&) {
    const auto type = _player ? _player->activeShuffleType() : 0;
    return ZRNPlainTextOfTemplate(shuffleTypeString(type, PlayerStringStyle::Label));
}

std::optional<std::uint64_t> ZRNMusicNowPlayingViewController::repeatTypeForNowPlayingViewController(Child&) {
    return _player ? static_cast<std::uint64_t>(_player->activeRepeatType()) : 0;
}

std::optional<std::string> ZRNMusicNowPlayingViewController::repeatStringForNowPlayingViewController(Child&) {
    const auto media = _player ? _player->currentMediaItem() : nullptr;
    const auto mediaType = media ? media->mediaType() : MediaType::Any;
    const auto type = _player ? _player->activeRepeatType() : 0;
    return ZRNPlainTextOfTemplate(
        repeatTypeString(type, mediaType, repeatContextKind(), PlayerStringStyle::Label));
}

int ZRNMusicNowPlayingViewController::repeatContextKind() const {
    const auto item = currentItem();
    const auto feeder = std::dynamic_pointer_cast<MediaQueryQueueFeeder>(item ? item->feeder() : nullptr);
    if (!feeder) return 0;
    const auto has = [&](const char* property) {
        return feeder->query()->predicateForProperty(property).has_value();
    };
    if (has(MediaItemProperty::AlbumPersistentID)) return 1;
    if (has(MediaItemProperty::ArtistPersistentID) || has(MediaItemProperty::AlbumArtistPersistentID))
        return 2;
    return has(MediaPlaylistProperty::PersistentID) ? 3 : 0;
}

// Delegate

std::optional<bool>
ZRNMusicNowPlayingViewController::nowPlayingViewControllerShouldDisplayButtonWithImageTinted(
    Child&, ZRNNowPlayingActionType button, Image& image, bool&) {
    const auto item = currentItem();
    if (button == ZRNNowPlayingActionTypeLeft) return displaysLeftButton(item.get(), image);
    if (button != ZRNNowPlayingActionTypeFastForward) return true;
    const auto feeder = item ? item->feeder() : nullptr;
    return feeder && feeder->canSkipCurrentItem();
}

bool ZRNMusicNowPlayingViewController::displaysLeftButton(const AVItem* item, Image& image) const {
    if (_viewMode == radioMode || (item && item->isRadioItem())) {
        image = ZRNHelmoImage("HelmoRadioInfoButton");
        return item && item->supportsRadioTrackActions();
    }
    image = ZRNHelmoImage("HelmoRewindButton");
    return !item || !item->isAdvertisement();
}

std::optional<bool> ZRNMusicNowPlayingViewController::nowPlayingViewControllerShouldEnableButton(
    Child&, ZRNNowPlayingActionType) {
    return true;
}

void ZRNMusicNowPlayingViewController::nowPlayingViewControllerDidSendActionState(
    Child&, ZRNNowPlayingActionType action, ZRNNowPlayingActionState state) {
    if (!_player || (state != ZRNNowPlayingActionStateBegan && state != ZRNNowPlayingActionStateEnded))
        return;
    switch (action) {
        case ZRNNowPlayingActionTypeLeft:
            if (_viewMode != radioMode) sendSkipOrSeek(-1, state);
            break;
        case ZRNNowPlayingActionTypeFastForward:
            sendSkipOrSeek(1, state);
            break;
        case ZRNNowPlayingActionTypePlayPause:
            _player->togglePlayback(driversToggle);
            break;
        case ZRNNowPlayingActionTypeBack:
            dismiss();
            break;
    }
}

void ZRNMusicNowPlayingViewController::sendSkipOrSeek(int direction, ZRNNowPlayingActionState state) {
    if (state == ZRNNowPlayingActionStateBegan)
        _player->beginSeek(direction);
    else if (_player->isSeekingOrScrubbing())
        _player->endSeek();
    else
        _player->changePlaybackIndexBy(direction);
}

std::optional<bool> ZRNMusicNowPlayingViewController::nowPlayingViewControllerCanShuffle(Child&) {
    return _viewMode == libraryMode;
}

std::optional<bool> ZRNMusicNowPlayingViewController::nowPlayingViewControllerCanRepeat(Child&) {
    return _viewMode == libraryMode;
}

std::optional<bool> ZRNMusicNowPlayingViewController::nowPlayingViewControllerCanCreate(Child&) {
    const auto library = MediaLibrary::defaultLibrary();
    return _viewMode == libraryMode && library && library->isBrivoEnabled() && library->activeBrivoPlaylist();
}

bool ZRNMusicNowPlayingViewController::nowPlayingViewControllerShouldUseWishlist(Child&) const {
    return _viewMode == radioMode;
}

void ZRNMusicNowPlayingViewController::nowPlayingViewControllerToggleShuffle(Child&) {
    if (!_player) return;
    const std::int64_t type = _player->activeShuffleType() == 0 ? 1 : 0;
    if (const auto defaults = ZRNSharedDefaults()) defaults->setShuffleType(type);
    _player->setActiveShuffleType(type);
    _nowPlayingViewController->reloadData();
}

void ZRNMusicNowPlayingViewController::nowPlayingViewControllerToggleRepeat(Child&) {
    if (!_player) return;
    const std::int64_t present = _player->activeRepeatType();
    const std::int64_t type = present == 0 ? 2 : present == 2 ? 1 : 0;
    if (const auto defaults = ZRNSharedDefaults()) defaults->setRepeatType(type);
    _player->setActiveRepeatType(type);
    _nowPlayingViewController->reloadData();
}

}  // namespace zornic
