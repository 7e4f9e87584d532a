#include "View Controllers/ZRNMusicNowPlayingViewController.h"

#include <limits>

#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNHelmoScreen.h"

namespace zornic {
namespace {

constexpr int transitionStyleOfStartedPlayback = 13;
constexpr auto refreshInterval = std::chrono::seconds(1);
constexpr double rightTitleSize = 16, rightTitleAlpha = 0.5;

/** Pixels a point at which a view's picture is wanted; the car screen's while the view is not on one. */
double pictureScale(const View& view) {
    const double scale = view.window() ? view.displayScale() : 0;
    if (scale >= std::numeric_limits<float>::epsilon()) return scale;
    const auto screen = ZRNHelmoScreen();
    return screen ? screen->scale() : 1;
}

}  // namespace

struct ZRNMusicNowPlayingViewController::Track {
    std::string title, artist, album;
    std::int32_t mode;
};

// Making

std::shared_ptr<ZRNMusicNowPlayingViewController> ZRNMusicNowPlayingViewController::withPlayer(
    const Player& player, const Provider& provider, bool startPlay) {
    const auto screen = make<ZRNMusicNowPlayingViewController>(player, provider);
    if (startPlay) {
        if (player) player->play();
        screen->setModalTransitionStyle(transitionStyleOfStartedPlayback);
    }
    screen->setViewMode(modeOf(screen->currentItem().get()));
    return screen;
}

std::shared_ptr<ZRNMusicNowPlayingViewController> ZRNMusicNowPlayingViewController::withQueryStartingAtIndex(
    const std::shared_ptr<MediaQuery>& query, std::uint64_t index, const Player& player,
    const Provider& provider) {
    const auto screen = withPlayer(player, provider, false);
    if (provider)
        provider->reloadPlayerMediaQueryOptions(player, query, {{"shuffleType", 0}, {"startIndex", index}});
    return screen;
}

std::shared_ptr<ZRNMusicNowPlayingViewController> ZRNMusicNowPlayingViewController::withQueryToShuffle(
    const std::shared_ptr<MediaQuery>& query, const Player& player, const Provider& provider) {
    const auto screen = withPlayer(player, provider, false);
    if (provider) provider->reloadPlayerMediaQueryOptions(player, query, {{"shuffleType", 1}});
    return screen;
}

std::shared_ptr<ZRNMusicNowPlayingViewController> ZRNMusicNowPlayingViewController::withBrivoMixPlaylist(
    const std::shared_ptr<MediaPlaylist>& playlist, const Player& player, const Provider& provider) {
    const auto screen = withPlayer(player, provider, false);
    if (provider) provider->reloadPlayerBrivoMixPlaylistOptions(player, playlist, {});
    return screen;
}

std::shared_ptr<ZRNMusicNowPlayingViewController> ZRNMusicNowPlayingViewController::withRadioStation(
    const std::shared_ptr<RadioStation>&, const Player& player, const Provider& provider) {
    return withPlayer(player, provider, false);
}

ZRNMusicNowPlayingViewController::ZRNMusicNowPlayingViewController(Player player, Provider provider)
    : _serviceProvider(std::move(provider)), _player(std::move(player)) {}

void ZRNMusicNowPlayingViewController::didMake() {
    ViewController::didMake();
    _nowPlayingViewController = make<ZRNNowPlayingViewController>();
}

std::shared_ptr<ZRNNowPlayingNavigationController>
ZRNMusicNowPlayingViewController::newPresentationNavigationController() {
    return make<ZRNNowPlayingNavigationController>(strong(this));
}

// View

/** As large as the screen from the first, so that the first picture is asked for at the size at which it is
 * seen. */
void ZRNMusicNowPlayingViewController::loadView() {
    ViewController::loadView();
    const auto self = strong(this);
    if (const auto screen = ZRNHelmoScreen()) self->view()->setFrame(screen->bounds());
}

void ZRNMusicNowPlayingViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    const auto& child = _nowPlayingViewController;
    addChildViewController(child);
    child->view()->setFrame(view()->bounds());
    view()->addSubview(child->view());
    child->didMoveToParentViewController(this);
    child->setDataSource(weak<ZRNNowPlayingViewControllerDataSource>(this));
    child->setDelegate(weak<ZRNNowPlayingViewControllerDelegate>(this));
    updateTrackInformation();
    installRightTitleLabel();
}

void ZRNMusicNowPlayingViewController::installRightTitleLabel() {
    _rightTitleLabel = make<Label>();
    _rightTitleLabel->setText(" ");
    _rightTitleLabel->setFont(Font::systemFont(rightTitleSize));
    _rightTitleLabel->setLineBreakMode(LineBreakMode::TruncatingTail);
    _rightTitleLabel->setTextColor(Color::white(1, rightTitleAlpha));
    _rightTitleLabel->setTextAlignment(TextAlignment::Right);
    _rightTitleLabel->sizeToFit();
    navigationItem()->setTitleView(make<View>());
    navigationItem()->setRightBarButtonItem(make<BarButtonItem>(_rightTitleLabel));
}

void ZRNMusicNowPlayingViewController::setTitle(const std::string& title) {
    if (_rightTitleLabel) {
        _rightTitleLabel->setText(title);
        _rightTitleLabel->sizeToFit();
        if (auto* bar = _rightTitleLabel->superview()) bar->setNeedsLayout();
    }
    ViewController::setTitle(title);
}

std::shared_ptr<View> ZRNMusicNowPlayingViewController::preferredFocusedItem() {
    const auto& transport = _nowPlayingViewController->transportControlView();
    return transport ? transport->playPauseButton() : nullptr;
}

void ZRNMusicNowPlayingViewController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    _cameWithItem = currentItem() != nullptr;
}

void ZRNMusicNowPlayingViewController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    observePlayer();
    updateTrackInformation();
    _playbackStateChanged({});
    if (_cameWithItem && !currentItem()) dismiss();  // it ended while the screen was on its way
}

void ZRNMusicNowPlayingViewController::viewWillDisappear(bool animated) {
    ViewController::viewWillDisappear(animated);
    _updateTimer.reset();
    _observations.clear();
}

void ZRNMusicNowPlayingViewController::dismiss() {
    if (const auto presenter = presentingViewController())
        presenter->dismissViewControllerWithTransition(PresentationTransition::Fall);
}

// Following the player

void ZRNMusicNowPlayingViewController::observePlayer() {
    using Self = ZRNMusicNowPlayingViewController;
    const auto observe = [this](const char* name, const Object* sender,
                                void (Self::*handler)(const Notification&)) {
        _observations.push_back(NotificationCenter::defaultCenter().observe(
            name, sender, [this, handler](const Notification& notification) {
                const auto self = strong(this);
                (this->*handler)(notification);
            }));
    };
    if (_player) {
        observe(AVControllerItemChangedNotification, _player.get(), &Self::_itemChanged);
        observe(AVControllerContentsChangedNotification, _player.get(), &Self::_playbackContentsChanged);
        observe(AVControllerPlaybackStateChangedNotification, _player.get(), &Self::_playbackStateChanged);
    }
    observe(AVItemIsExplicitDidChangeNotification, nullptr, &Self::_itemIsExplicitDidChangeNotification);
    observe(AVItemTitlesDidChangeNotification, nullptr, &Self::_itemTitlesDidChangeNotification);
    observe(AVItemStoreIDDidChangeNotification, nullptr, &Self::_itemStoreIDDidChangeNotification);
}

void ZRNMusicNowPlayingViewController::_itemChanged(const Notification&) {
    if (!currentItem()) return dismiss();
    updateTrackInformation();
}

void ZRNMusicNowPlayingViewController::_playbackContentsChanged(const Notification&) {
    updateTrackInformation();
}

void ZRNMusicNowPlayingViewController::_playbackStateChanged(const Notification&) {
    _updateTimer.reset();
    if (_player && _player->isPlaying()) {
        _updateTimer = RunLoop::main().every(refreshInterval, [this] { _playerTick(); });
        _playerTick();
    } else {
        _nowPlayingViewController->updatePlayControls();
    }
}

void ZRNMusicNowPlayingViewController::_itemIsExplicitDidChangeNotification(
    const Notification& notification) {
    const auto item = currentItem();
    const auto changed = std::dynamic_pointer_cast<AVItem>(notification.sender);
    if (item && changed && changed->isEqual(*item)) updateTrackInformation();
}

void ZRNMusicNowPlayingViewController::_itemTitlesDidChangeNotification(const Notification&) {
    updateTrackInformation();
}

void ZRNMusicNowPlayingViewController::_itemStoreIDDidChangeNotification(const Notification&) {
    updateTrackInformation();
}

void ZRNMusicNowPlayingViewController::_playerTick() { _nowPlayingViewController->updatePlayControls(); }

// The current item

std::int32_t ZRNMusicNowPlayingViewController::modeOf(const AVItem* item) {
    if (item && item->isRadioItem()) return radioMode;
    return item && item->isAdvertisement() ? advertisementMode : libraryMode;
}

ZRNMusicNowPlayingViewController::Track ZRNMusicNowPlayingViewController::trackOf(
    const std::shared_ptr<AVItem>& item) const {
    if (const auto libraryItem = std::dynamic_pointer_cast<AVLibraryItem>(item)) {
        const auto& media = libraryItem->mediaItem();
        return {media->title(), media->artist(), media->albumTitle(), libraryMode};
    }
    const auto mode = modeOf(item.get());
    if (mode == libraryMode) return {{}, {}, {}, _viewMode};
    Track track{item->mainTitle(), item->artist(), item->albumTitle(), mode};
    if (mode == advertisementMode && track.album.empty()) track.album = ZRNLocalizedString("Kivo");
    return track;
}

void ZRNMusicNowPlayingViewController::updateTrackInformation() {
    const auto item = currentItem();
    Track track = trackOf(item);
    _nowPlayingTitle = std::move(track.title);
    _nowPlayingArtist = std::move(track.artist);
    _nowPlayingAlbum = std::move(track.album);
    _isExplicitTrack = item && item->isExplicitTrack();
    const auto passIsDone = std::make_shared<bool>(false);
    updateArtwork(item, passIsDone);
    setViewMode(track.mode);
    setTitle(item ? item->localizedPositionInPlaylistString() : "");
    _nowPlayingViewController->reloadData();
    *passIsDone = true;
}

/** A picture that is at hand arrives within the pass, whose own reload shows it. */
void ZRNMusicNowPlayingViewController::updateArtwork(const std::shared_ptr<AVItem>& item,
                                                     const std::shared_ptr<const bool>& passIsDone) {
    if (!isViewLoaded()) {
        _nowPlayingAlbumArt = {};
        return;
    }
    const auto& destination = view();
    const auto catalog = item ? item->artworkCatalogForTime(_player->currentTime()) : nullptr;
    const auto bound = ArtworkCatalog::boundTo(destination);
    if (catalog && bound && bound->isVisuallyIdenticalTo(*catalog)) return;
    _nowPlayingAlbumArt = {};
    if (!catalog) return ArtworkCatalog::unbind(destination);  // or the same picture would not be shown again
    const Size size = destination->bounds().size;
    catalog->setDestinationScale(pictureScale(*destination));
    catalog->setFittingSize({std::max(size.width, size.height), size.height});
    catalog->setDestination(destination, [weakSelf = weak(this), passIsDone](const Image& image) {
        const auto self = weakSelf.lock();
        if (!self) return;
        self->_nowPlayingAlbumArt = image;
        if (*passIsDone) self->_nowPlayingViewController->reloadData();
    });
}

}  // namespace zornic
