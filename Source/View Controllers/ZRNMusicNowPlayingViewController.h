#pragma once

#include <memory>
#include <vector>

#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/AVController.h"
#include "View Controllers/ZRNHelmoServiceProvider.h"
#include "View Controllers/ZRNNowPlayingNavigationController.h"
#include "View Controllers/ZRNNowPlayingViewController.h"

namespace zornic {

/** Now Playing for the car's own player: says what its current item is, follows it, and hands on what the
   driver does. Main thread. */
class ZRNMusicNowPlayingViewController : public ViewController,
                                         public ZRNNowPlayingViewControllerDataSource,
                                         public ZRNNowPlayingViewControllerDelegate {
public:
    using Provider = std::shared_ptr<ZRNHelmoServiceProvider>;
    using Player = std::shared_ptr<AVController>;

    /** For what the player has; it plays on when `startPlay`. Nothing is presented, here and below. */
    static std::shared_ptr<ZRNMusicNowPlayingViewController> withPlayer(const Player& player,
                                                                        const Provider& provider,
                                                                        bool startPlay);
    /** Plays the query's items in order, from `index` on. */
    static std::shared_ptr<ZRNMusicNowPlayingViewController> withQueryStartingAtIndex(
        const std::shared_ptr<MediaQuery>& query, std::uint64_t index, const Player& player,
        const Provider& provider);
    static std::shared_ptr<ZRNMusicNowPlayingViewController> withQueryToShuffle(
        const std::shared_ptr<MediaQuery>& query, const Player& player, const Provider& provider);
    static std::shared_ptr<ZRNMusicNowPlayingViewController> withBrivoMixPlaylist(
        const std::shared_ptr<MediaPlaylist>& playlist, const Player& player, const Provider& provider);
    /** The station is in the player already: who makes this has loaded it. */
    static std::shared_ptr<ZRNMusicNowPlayingViewController> withRadioStation(
        const std::shared_ptr<RadioStation>& station, const Player& player, const Provider& provider);
    /** Used by the makers above. */
    ZRNMusicNowPlayingViewController(Player player, Provider provider);
    void didMake() override;

    /** A new stack with this on top, to be presented. */
    std::shared_ptr<ZRNNowPlayingNavigationController> newPresentationNavigationController();
    /** Kind of the current item: 1 music, 2 radio, 3 an advertisement. */
    std::int32_t viewMode() const { return _viewMode; }
    void setViewMode(std::int32_t mode) { _viewMode = mode; }
    const std::shared_ptr<ZRNNowPlayingViewController>& nowPlayingViewController() const {
        return _nowPlayingViewController;
    }
    /** Reads the current item anew. */
    void updateTrackInformation();
    /** For an owner that spreads the controls over pages; the screen itself has one. */
    const std::vector<std::shared_ptr<ViewController>>& controlPages() const { return _controlPages; }
    void setControlPages(std::vector<std::shared_ptr<ViewController>> pages) {
        _controlPages = std::move(pages);
    }
    std::uint64_t currentPageIndex() const { return _currentPageIndex; }
    void setCurrentPageIndex(std::uint64_t index) { _currentPageIndex = index; }
    bool nowPlayingViewControllerShouldUseWishlist(ZRNNowPlayingViewController& controller) const;

    /** Shown at the right of the bar. */
    void setTitle(const std::string& title) override;
    /** The play/pause button. */
    std::shared_ptr<View> preferredFocusedItem() override;
    void loadView() override;
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;

    using Child = ZRNNowPlayingViewController;
    std::string artistTextForNowPlayingController(Child& child) override;
    std::string albumTextForNowPlayingController(Child& child) override;
    std::string titleForNowPlayingController(Child& child) override;
    Image backgroundArtForNowPlayingController(Child& child) override;
    bool nowPlayingViewControllerIsShowingExplicitTrack(Child& child) override;
    double playbackDurationForNowPlayingViewControllerWithElapsedTime(Child& child, double& elapsed) override;
    bool nowPlayingViewControllerIsPlaying(Child& child) override;
    std::optional<std::uint64_t> shuffleTypeForNowPlayingViewController(Child& child) override;
    std::optional<std::string> shuffleStringForNowPlayingViewController(Child& child) override;
    std::optional<std::uint64_t> repeatTypeForNowPlayingViewController(Child& child) override;
    std::optional<std::string> repeatStringForNowPlayingViewController(Child& child) override;

    std::optional<bool> nowPlayingViewControllerShouldDisplayButtonWithImageTinted(
        Child& child, ZRNNowPlayingActionType button, Image& image, bool& tinted) override;
    std::optional<bool> nowPlayingViewControllerShouldEnableButton(Child& child,
                                                                   ZRNNowPlayingActionType button) override;
    void nowPlayingViewControllerDidSendActionState(Child& child, ZRNNowPlayingActionType action,
                                                    ZRNNowPlayingActionState state) override;
    std::optional<bool> nowPlayingViewControllerCanShuffle(Child& child) override;
    std::optional<bool> nowPlayingViewControllerCanRepeat(Child& child) override;
    /** Only while the library has a playlist to be filled, so that the button never does nothing. */
    std::optional<bool> nowPlayingViewControllerCanCreate(Child& child) override;
    void nowPlayingViewControllerToggleShuffle(Child& child) override;
    /** Off, all, the song, off. */
    void nowPlayingViewControllerToggleRepeat(Child& child) override;

private:
    enum : std::int32_t { libraryMode = 1, radioMode = 2, advertisementMode = 3 };
    struct Track;
    static std::int32_t modeOf(const AVItem* item);
    std::shared_ptr<AVItem> currentItem() const { return _player ? _player->currentItem() : nullptr; }
    Track trackOf(const std::shared_ptr<AVItem>& item) const;
    void updateArtwork(const std::shared_ptr<AVItem>& item, const std::shared_ptr<const bool>& passIsDone);
    bool displaysLeftButton(const AVItem* item, Image& image) const;
    void sendSkipOrSeek(int direction, ZRNNowPlayingActionState state);
    int repeatContextKind() const;
    void installRightTitleLabel();
    void dismiss();

    void observePlayer();
    void _itemChanged(const Notification& notification);
    void _playbackContentsChanged(const Notification& notification);
    void _playbackStateChanged(const Notification& notification);
    void _itemIsExplicitDidChangeNotification(const Notification& notification);
    void _itemTitlesDidChangeNotification(const Notification& notification);
    void _itemStoreIDDidChangeNotification(const Notification& notification);
    void _playerTick();

    const Provider _serviceProvider;
    const Player _player;
    std::shared_ptr<ZRNNowPlayingViewController> _nowPlayingViewController;
    std::string _nowPlayingTitle, _nowPlayingArtist, _nowPlayingAlbum;
    Image _nowPlayingAlbumArt;
    std::shared_ptr<Label> _rightTitleLabel;
    bool _isExplicitTrack = false;
    /** Something was loaded when it last began to appear. */
    bool _cameWithItem = false;
    /** Only while playing. */
    Token _updateTimer;
    std::int32_t _viewMode = libraryMode;
    std::vector<std::shared_ptr<ViewController>> _controlPages;
    std::uint64_t _currentPageIndex = 0;
    std::vector<Observation> _observations;
};

}  // namespace zornic
