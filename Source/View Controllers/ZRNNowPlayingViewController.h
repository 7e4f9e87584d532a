#pragma once

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/ViewController.h"
#include "View Controllers/ZRNNowPlayingViewControllerDataSource.h"
#include "View Controllers/ZRNNowPlayingViewControllerDelegate.h"
#include "Views/ZRNNowPlayingView.h"
#include "Views/ZRNPlayModeControlView.h"
#include "Views/ZRNTransportControlView.h"
#include "Views/_ZRNNowPlayingHostView.h"

namespace zornic {

class NavigationBar;

/** Body of every Now Playing screen: shows what its data source says, tells its delegate what the driver
   does. It follows nothing by itself; its owner says when to look again. Main thread. */
class ZRNNowPlayingViewController : public ViewController {
public:
    /** None once it is gone; held weakly. */
    std::shared_ptr<ZRNNowPlayingViewControllerDataSource> dataSource() const { return _dataSource.lock(); }
    void setDataSource(std::weak_ptr<ZRNNowPlayingViewControllerDataSource> dataSource);
    std::shared_ptr<ZRNNowPlayingViewControllerDelegate> delegate() const { return _delegate.lock(); }
    void setDelegate(std::weak_ptr<ZRNNowPlayingViewControllerDelegate> delegate);
    /** None before the view is loaded; asking doesn't load it. */
    const std::shared_ptr<ZRNNowPlayingView>& nowPlayingView() const { return _nowPlayingView; }
    const std::shared_ptr<ZRNTransportControlView>& transportControlView() const {
        return _transportControlView;
    }
    const std::shared_ptr<ZRNPlayModeControlView>& playModeControlView() const {
        return _playModeControlView;
    }

    /** Reads everything anew. Without a data source nothing is shown. Nothing happens before the view is
     * loaded. */
    void reloadData();
    /** Reads buttons, time and play modes anew: what changes while a track goes on. */
    void updatePlayControls();

    void loadView() override;
    /** Lets the artwork run under a bar that becomes clear until the screen disappears. */
    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;

private:
    void addNowPlayingView(View& host);
    void addTransportControlView(View& host);
    void addPlayModeControlView(View& host);
    void _initializeTransportControls();
    void clearNavigationBar();
    void layoutForAppearance();

    void _updateTransportControlWithDefaultImageActionType(const std::shared_ptr<ZRNButton>& button,
                                                           const Image& defaultImage,
                                                           ZRNNowPlayingActionType type);
    void updateProgress();
    void _updatePlayModesState();
    void _updateShuffleStateWithType(std::uint64_t type);
    void _updateRepeatStateWithType(std::uint64_t type);

    void _sendActionWithState(ZRNNowPlayingActionType action, ZRNNowPlayingActionState state);
    void _playPauseButtonTouchUp(const std::shared_ptr<Control>& sender);
    void _leftButtonTouchDown(const std::shared_ptr<Control>& sender);
    void _leftButtonTouchUp(const std::shared_ptr<Control>& sender);
    void _fastForwardButtonTouchDown(const std::shared_ptr<Control>& sender);
    void _fastForwardButtonTouchUp(const std::shared_ptr<Control>& sender);
    void holdAction(ZRNNowPlayingActionType action);
    void _respondToHeldAction();
    void _sendHeldAction();
    void _shuffleButtonTouchUp(const std::shared_ptr<Control>& sender);
    void _repeatButtonTouchUp(const std::shared_ptr<Control>& sender);
    void _brivoButtonTouchUp(const std::shared_ptr<Control>& sender);

    /** -1 once its release was told. */
    ZRNNowPlayingActionType _heldAction = ZRNNowPlayingActionTypeLeft;
    /** The bar that was made clear, and how it was before; none while it is as it was. */
    std::weak_ptr<NavigationBar> _clearedBar;
    std::optional<Color> _navbarColor;
    bool _navbarHidesShadow = false;
    std::shared_ptr<ZRNTransportControlView> _transportControlView;
    std::weak_ptr<ZRNNowPlayingViewControllerDelegate> _delegate;
    std::weak_ptr<ZRNNowPlayingViewControllerDataSource> _dataSource;
    std::shared_ptr<ZRNNowPlayingView> _nowPlayingView;
    std::shared_ptr<ZRNPlayModeControlView> _playModeControlView;
    bool _laidOut = false;
    DelayedCalls _delayedCalls;
};

}  // namespace zornic
