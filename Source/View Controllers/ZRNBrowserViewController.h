#pragma once

#include <string>
#include <vector>

#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/WeakMaps.h"
#include "Platform/Media/AVController.h"
#include "Platform/Services/RadioAlertView.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Platform/Toolkit/TabBarController.h"
#include "View Controllers/ZRNHelmoServiceProvider.h"
#include "Views/ZRNNoContentView.h"
#include "Views/ZRNNowPlayingButton.h"

namespace zornic {

/** Posted by the host's tab container, as sender, when the driver arranged the tabs anew. */
inline constexpr const char* MusicTabBarControllerDidChangeOrderedViewControllerIdentifiersNotification =
    "MusicTabBarControllerDidChangeOrderedViewControllerIdentifiersNotification";

/** The root of the display: a stack whose bottom screen has a tab for each category that the host shows, in
   the host's order. Presents Now Playing, keeps pushed lists true when the library changes, lays a text over
   empty categories and shows the radio service's alerts. Main thread. */
class ZRNBrowserViewController : public NavigationController,
                                 public TabBarControllerDelegate,
                                 public RadioAlertViewDelegate {
public:
    /** Follows the tabs of the host's container, held weakly; without one it has its own eight. */
    explicit ZRNBrowserViewController(const std::shared_ptr<TabBarController>& hostTabBarController);
    void didMake() override;
    ~ZRNBrowserViewController() override;

    const std::shared_ptr<AVController>& player() const { return _player; }
    void setPlayer(const std::shared_ptr<AVController>& player);
    std::shared_ptr<ZRNHelmoServiceProvider> serviceProvider() const { return _serviceProvider.lock(); }
    /** Held weakly. */
    void setServiceProvider(const std::shared_ptr<ZRNHelmoServiceProvider>& serviceProvider);
    std::shared_ptr<TabBarController> hostTabBarController() const { return _hostTabBarController.lock(); }
    void setHostTabBarController(const std::shared_ptr<TabBarController>& container) {
        _hostTabBarController = container;
    }
    /** The tab container at the bottom of the stack. */
    const std::shared_ptr<TabBarController>& tabs() const { return _tabBarController; }
    bool libraryHasSongs() const { return _libraryHasSongs; }

    /** Makes the tabs anew. Without force, screens whose identifier matches are used again, and then stand in
       the list twice. */
    void reloadWithTabsForceReload(const std::vector<std::string>& identifiers, bool force);
    /** Presents Now Playing, when there is a player with a current item and a service provider. */
    void pushNowPlaying(bool animated);
    /** Reloads pushed lists and pops those that have become empty, with what lies over them. */
    void refreshNavigationPath();
    /** Made when first asked for. */
    const std::shared_ptr<ZRNNowPlayingButton>& nowPlayingButton();
    /** Presents Now Playing, always animated. */
    void ZRN_pushNowPlayingViewControllerAnimated(bool animated) override;
    /** The text laid over an empty tab screen; none. */
    std::shared_ptr<ZRNNoContentView> noContentViewForScreen(
        const std::shared_ptr<ViewController>& screen) const {
        return _noContentViews.get(screen);
    }

    void viewDidAppear(bool animated) override;
    void tabBarControllerDidSelectViewController(TabBarController& container,
                                                 const std::shared_ptr<ViewController>& screen) override;
    void willPresentAlertView(const std::shared_ptr<RadioAlertView>& alertView) override;
    void didDismissAlertView(const std::shared_ptr<RadioAlertView>& alertView) override;

    void _reloadHostTabs();
    void _tabBarDidChangeViewControllers(const Notification& notification);
    /** Any thread. */
    void _mediaLibraryDidChange(const Notification& notification);
    void _accountsDidChangeNotification(const Notification& notification);
    void _itemChanged(const Notification& notification);
    void _nowPlayingButtonTouchUpInside(const std::shared_ptr<Control>& sender);
    void _updateNowPlayingVisibility();
    bool _isNowPlayingAvailable() const { return _player && _player->currentItem(); }
    /** A new screen with its tab for one of the display's identifiers; none for any other. */
    std::shared_ptr<ViewController> _createViewControllerForIdentifier(const std::string& identifier);

private:
    /** A list of the old kind, which is not made by registration; none for other tabs. */
    std::shared_ptr<ViewController> listForIdentifier(const std::string& identifier) const;
    void observeHost();
    std::shared_ptr<ViewController> reusableScreen(
        const std::vector<std::shared_ptr<ViewController>>& screens, const std::string& identifier) const;
    void updateNoContentView(const std::shared_ptr<ViewController>& screen, bool forceEmpty);
    void refreshNoContentViews();
    void layNoContentView(const std::shared_ptr<ViewController>& screen);
    void updateMoreTab();
    void presentNewNowPlaying(int transition);

    bool _viewHasAppeared = false;
    bool _libraryHasSongs = false;
    std::shared_ptr<TabBarController> _tabBarController;
    std::shared_ptr<ZRNNowPlayingButton> _nowPlayingButton;
    WeakKeyMap<ViewController, std::shared_ptr<ZRNNoContentView>> _noContentViews;
    std::shared_ptr<RadioAlertView> _mirroredAlert;
    std::shared_ptr<AVController> _player;
    std::weak_ptr<ZRNHelmoServiceProvider> _serviceProvider;
    std::weak_ptr<TabBarController> _hostTabBarController;
    std::vector<Observation> _observations;
    Observation _itemObservation;
};

}  // namespace zornic
