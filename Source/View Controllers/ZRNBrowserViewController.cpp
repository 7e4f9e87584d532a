#include "View Controllers/ZRNBrowserViewController.h"

#include <algorithm>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Platform/Media/MediaLibrary.h"
#include "Platform/Media/MediaProperty.h"
#include "Platform/Media/MediaQuery.h"
#include "Platform/Toolkit/AlertController.h"
#include "Platform/Toolkit/ScrollView.h"
#include "Utilities/ViewControllerZornicAdditions.h"
#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNObservation.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"
#include "View Controllers/ZRNAudiobooksTableViewController.h"
#include "View Controllers/ZRNBrivoMixesViewController.h"
#include "View Controllers/ZRNBrowserTabs.h"
#include "View Controllers/ZRNCompilationsTableViewController.h"
#include "View Controllers/ZRNMusicNowPlayingViewController.h"
#include "View Controllers/ZRNNowPlayingNavigationController.h"
#include "View Controllers/ZRNTableViewController.h"
#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace zornic {
namespace {

constexpr const char* visibleIdentifiersKey = "visibleViewControllerIdentifiers";

bool defaultLibraryHasSongs() {
    const auto library = MediaLibrary::defaultLibrary();
    return library && library->hasSongs();
}

bool isEmptyList(const std::shared_ptr<ViewController>& screen) {
    const auto list = std::dynamic_pointer_cast<ZRNTableViewController>(screen);
    return list && list->queryDataSource()->isEmpty();
}

/** Refreshes the lists on a path, and goes back to below the first that has nothing to show; `firstPushed`:
   of those that a driver came to from a tab. */
void leaveEmptyLists(NavigationController& path, std::size_t firstPushed) {
    const auto stack = path.viewControllers();
    if (stack.empty()) return;
    std::size_t stop = 0;
    for (; stop < stack.size(); ++stop) {
        const auto list = std::dynamic_pointer_cast<ZRN_OLD_TableViewController>(stack[stop]);
        if (!list) continue;
        list->refreshRows();
        if (stop >= firstPushed && !list->hasRowsToDisplay()) break;
    }
    const auto target = stack[stop == 0 ? 0 : stop - 1];
    if (target != path.topViewController()) path.popToViewController(target, true);
}

}  // namespace

ZRNBrowserViewController::ZRNBrowserViewController(
    const std::shared_ptr<TabBarController>& hostTabBarController)
    : _hostTabBarController(hostTabBarController) {}

void ZRNBrowserViewController::didMake() {
    NavigationController::didMake();
    setNavigationBarHidden(true, false);
    _tabBarController = make<TabBarController>();
    _tabBarController->setDelegate(weak<TabBarControllerDelegate>(this));
    pushViewController(_tabBarController, false);
    observeHost();
    _reloadHostTabs();
}

ZRNBrowserViewController::~ZRNBrowserViewController() {
    if (_tabBarController) _tabBarController->setDelegate({});
}

void ZRNBrowserViewController::observeHost() {
    auto& center = NotificationCenter::defaultCenter();
    _observations.push_back(center.observe(
        MusicTabBarControllerDidChangeOrderedViewControllerIdentifiersNotification,
        hostTabBarController().get(),
        [this](const Notification& notification) { _tabBarDidChangeViewControllers(notification); }));
    _observations.push_back(ZRNObserveFromAnyThread(MediaLibraryDidChangeNotification, nullptr, this,
                                                    &ZRNBrowserViewController::_mediaLibraryDidChange));
    _observations.push_back(center.observe(
        RadioOptInDidChangeNotification, nullptr,
        [this](const Notification& notification) { _accountsDidChangeNotification(notification); }));
}

void ZRNBrowserViewController::setPlayer(const std::shared_ptr<AVController>& player) {
    if (player == _player) return;
    _itemObservation.reset();
    if (player)
        _itemObservation = NotificationCenter::defaultCenter().observe(
            AVControllerItemChangedNotification, player.get(),
            [this](const Notification& notification) { _itemChanged(notification); });
    _player = player;
    pushNowPlaying(false);
}

void ZRNBrowserViewController::setServiceProvider(
    const std::shared_ptr<ZRNHelmoServiceProvider>& serviceProvider) {
    if (serviceProvider == _serviceProvider.lock()) return;
    _serviceProvider = serviceProvider;
    _reloadHostTabs();
    pushNowPlaying(false);
}

void ZRNBrowserViewController::_reloadHostTabs() {
    const auto host = hostTabBarController();
    if (!host) return reloadWithTabsForceReload(ZRNDefaultTabIdentifiers(), true);
    std::vector<std::string> identifiers;
    for (const auto& name : host->textsForKey(visibleIdentifiersKey).value_or(std::vector<std::string>()))
        if (auto identifier = ZRN_helmoIdentifierForIdentifier(name))
            identifiers.push_back(std::move(*identifier));
    reloadWithTabsForceReload(identifiers, true);
}

void ZRNBrowserViewController::reloadWithTabsForceReload(const std::vector<std::string>& identifiers,
                                                         bool force) {
    std::vector<std::shared_ptr<ViewController>> screens;
    const auto reusable =
        force ? std::vector<std::shared_ptr<ViewController>>() : _tabBarController->viewControllers();
    _libraryHasSongs = defaultLibraryHasSongs();
    for (const auto& identifier : identifiers) {
        bool forceEmpty = false;
        auto screen = reusableScreen(reusable, identifier);
        if (screen) {
            screens.push_back(screen);
        } else {
            screen = _createViewControllerForIdentifier(identifier);
            if (!screen) continue;
            forceEmpty = identifier == ZRNPlaylistsViewControllerIdentifier && !_libraryHasSongs;
        }
        updateNoContentView(screen, forceEmpty);
        screen->setIdentifier(identifier);
        screens.push_back(screen);
    }
    _tabBarController->setViewControllers(std::move(screens));
    _tabBarController->setCustomizableViewControllers({});
    updateMoreTab();
    refreshNavigationPath();
}

std::shared_ptr<ViewController> ZRNBrowserViewController::reusableScreen(
    const std::vector<std::shared_ptr<ViewController>>& screens, const std::string& identifier) const {
    const auto found =
        std::ranges::find_if(screens, [&](const auto& screen) { return screen->identifier() == identifier; });
    return found == screens.end() ? nullptr : *found;
}

std::shared_ptr<ViewController> ZRNBrowserViewController::_createViewControllerForIdentifier(
    const std::string& identifier) {
    const auto* tab = ZRNBrowserTabForIdentifier(identifier);
    if (!tab) return nullptr;
    auto screen = listForIdentifier(identifier);
    if (!screen) screen = ScreenRegistry::shared().viewControllerForIdentifier(identifier);
    if (!screen) return nullptr;
    const TabBarItem item = ZRNTabBarItem(*tab);
    if (tab->titlesScreen) screen->setTitle(item.title);
    screen->setTabBarItem(item);
    return screen;
}

std::shared_ptr<ViewController> ZRNBrowserViewController::listForIdentifier(
    const std::string& identifier) const {
    const auto provider = _serviceProvider.lock();
    if (identifier == ZRNBrivoMixesViewControllerIdentifier) {
        const auto query = MediaQuery::brivoMixesQuery();
        query->addFilterPredicate(
            MediaPredicate::property(MediaPlaylistProperty::IsActiveBrivoPlaylist, false));
        return make<ZRNBrivoMixesViewController>(query, _player, provider);
    }
    if (identifier == ZRNAudiobooksViewControllerIdentifier)
        return make<ZRNAudiobooksTableViewController>(MediaQuery::audiobooksQuery(), _player, provider);
    if (identifier == ZRNCompilationsViewControllerIdentifier)
        return make<ZRNCompilationsTableViewController>(MediaQuery::compilationsQuery(), _player, provider);
    return nullptr;
}

void ZRNBrowserViewController::updateNoContentView(const std::shared_ptr<ViewController>& screen,
                                                   bool forceEmpty) {
    if (forceEmpty || isEmptyList(screen)) return layNoContentView(screen);
    if (const auto laid = _noContentViews.get(screen)) {
        laid->removeFromSuperview();
        _noContentViews.remove(screen);
    }
}

void ZRNBrowserViewController::layNoContentView(const std::shared_ptr<ViewController>& screen) {
    const auto noContent = make<ZRNNoContentView>(Rect());
    noContent->setTranslatesAutoresizingMaskIntoConstraints(false);
    screen->view()->addSubview(noContent);
    noContent->attachEdges(*screen->view(), AllEdges, {});
    _noContentViews.set(screen, noContent);
}

void ZRNBrowserViewController::updateMoreTab() {
    const auto list = _tabBarController->moreListController();
    _tabBarController->moreNavigationController()->setTabBarItem(ZRNMoreTabBarItem(list->title()));
    if (const auto scrolling = std::dynamic_pointer_cast<ScrollView>(list->view())) {
        scrolling->setShowsHorizontalScrollIndicator(false);
        scrolling->setShowsVerticalScrollIndicator(false);
    }
}

void ZRNBrowserViewController::refreshNavigationPath() {
    if (!isViewLoaded()) return;
    leaveEmptyLists(*this, 0);
    // At the bottom are the list of tabs and the tab's own screen, which says that it is empty.
    leaveEmptyLists(*_tabBarController->moreNavigationController(), 2);
    for (const auto& screen : _tabBarController->viewControllers())
        if (const auto list = std::dynamic_pointer_cast<ZRN_OLD_TableViewController>(screen);
            list && list->isViewLoaded())
            list->refreshRows();
}

void ZRNBrowserViewController::presentNewNowPlaying(int transition) {
    const auto screen = ZRNMusicNowPlayingViewController::withPlayer(_player, serviceProvider(), false);
    presentViewControllerWithTransition(screen->newPresentationNavigationController(), transition);
}

void ZRNBrowserViewController::pushNowPlaying(bool animated) {
    if (!_player || !serviceProvider() || !_isNowPlayingAvailable()) return;
    if (std::dynamic_pointer_cast<ZRNMusicNowPlayingViewController>(presentedViewController())) return;
    presentNewNowPlaying(animated ? PresentationTransition::Rise : PresentationTransition::None);
}

void ZRNBrowserViewController::_nowPlayingButtonTouchUpInside(const std::shared_ptr<Control>&) {
    presentNewNowPlaying(PresentationTransition::Rise);
}

void ZRNBrowserViewController::ZRN_pushNowPlayingViewControllerAnimated(bool) {
    _nowPlayingButtonTouchUpInside(nullptr);
}

const std::shared_ptr<ZRNNowPlayingButton>& ZRNBrowserViewController::nowPlayingButton() {
    if (!_nowPlayingButton) {
        const auto& bar = _tabBarController->tabBar();
        _nowPlayingButton = ZRNNowPlayingButton::buttonWithHeight(bar ? bar->bounds().height() : 0);
        _nowPlayingButton->addTarget(this, &ZRNBrowserViewController::_nowPlayingButtonTouchUpInside,
                                     ControlEvent::TouchUpInside);
    }
    return _nowPlayingButton;
}

void ZRNBrowserViewController::_updateNowPlayingVisibility() {
    const bool shown = _isNowPlayingAvailable() && _viewHasAppeared;
    _tabBarController->setAccessoryView(shown ? nowPlayingButton() : nullptr);
}

void ZRNBrowserViewController::viewDidAppear(bool animated) {
    NavigationController::viewDidAppear(animated);
    _viewHasAppeared = true;
    _updateNowPlayingVisibility();
}

void ZRNBrowserViewController::tabBarControllerDidSelectViewController(
    TabBarController& container, const std::shared_ptr<ViewController>& screen) {
    container.setTitle(screen->title());
}

void ZRNBrowserViewController::_tabBarDidChangeViewControllers(const Notification&) { _reloadHostTabs(); }

void ZRNBrowserViewController::_accountsDidChangeNotification(const Notification&) { _reloadHostTabs(); }

void ZRNBrowserViewController::_itemChanged(const Notification&) { _updateNowPlayingVisibility(); }

void ZRNBrowserViewController::_mediaLibraryDidChange(const Notification&) {
    mainQueue().async([self = strong(this)] {
        if (defaultLibraryHasSongs() != self->_libraryHasSongs) self->_reloadHostTabs();
        self->refreshNavigationPath();
        // The lists' own answers to the change are queued behind this one.
        mainQueue().async([weakSelf = weak(self.get())] {
            if (const auto living = weakSelf.lock()) living->refreshNoContentViews();
        });
    });
}

/** A category that filled or emptied since its tab was made. */
void ZRNBrowserViewController::refreshNoContentViews() {
    for (const auto& screen : _tabBarController->viewControllers()) {
        const bool isLaid = _noContentViews.get(screen) != nullptr;
        const bool staysEmpty =
            screen->identifier() == ZRNPlaylistsViewControllerIdentifier && !_libraryHasSongs;
        if (!staysEmpty && isLaid != isEmptyList(screen)) updateNoContentView(screen, false);
    }
}

void ZRNBrowserViewController::willPresentAlertView(const std::shared_ptr<RadioAlertView>& alertView) {
    const auto alert =
        make<AlertController>(alertView->title(), alertView->message(), AlertControllerStyle::Alert);
    alert->addAction(make<AlertAction>(ZRNLocalizedString("OK"), AlertActionStyle::Cancel,
                                       [weakSelf = weak(this), alertView] {
                                           if (const auto self = weakSelf.lock())
                                               self->_mirroredAlert = nullptr;
                                           alertView->dismiss(-1, true);
                                       }));
    presentViewController(alert, true);
    _mirroredAlert = alertView;
}

void ZRNBrowserViewController::didDismissAlertView(const std::shared_ptr<RadioAlertView>&) {
    if (_mirroredAlert) dismissViewController(true);
    _mirroredAlert = nullptr;
}

}  // namespace zornic
