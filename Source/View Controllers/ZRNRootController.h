#pragma once

#include <memory>

#include "Platform/Media/AVController.h"
#include "Platform/Toolkit/Window.h"
#include "View Controllers/ZRNBrowserViewController.h"
#include "View Controllers/ZRNHelmoServiceProvider.h"

namespace zornic {

/** Posted, without sender, by `reloadRadio`. The spelling is what observers match. */
inline constexpr const char* ZRNRootControllerRadioNotificicationName =
    "ZRNRootControllerRadioNotificicationName";

/** The one object that a host makes for a car's display: it owns the window and everything in it. The host
   makes it with the screen, sets player and service provider, and keeps it while the car is connected. Main
   thread. */
class ZRNRootController : public Object {
public:
    /** Without a screen there is no window, and everything else works. */
    ZRNRootController(std::shared_ptr<Screen> screen, std::shared_ptr<TabBarController> hostTabBarController);
    void didMake() override;
    ~ZRNRootController() override;

    const std::shared_ptr<Window>& helmoWindow() const { return _helmoWindow; }
    const std::shared_ptr<ZRNBrowserViewController>& browserViewController() const {
        return _browserViewController;
    }

    const std::shared_ptr<AVController>& player() const { return _player; }
    /** The player that all screens use; it becomes the shared player too. */
    void setPlayer(const std::shared_ptr<AVController>& player);
    std::shared_ptr<ZRNHelmoServiceProvider> serviceProvider() const { return _serviceProvider.lock(); }
    /** Held weakly. */
    void setServiceProvider(const std::shared_ptr<ZRNHelmoServiceProvider>& serviceProvider);

    /** Shows Now Playing, when something plays. */
    void showNowPlaying();
    /** Makes the radio screens load their stations anew. */
    void reloadRadio();

private:
    const std::shared_ptr<Screen> _screen;
    std::shared_ptr<TabBarController> _hostTabBarController;  // only until it is made
    std::shared_ptr<Window> _helmoWindow;
    std::shared_ptr<ZRNBrowserViewController> _browserViewController;
    std::shared_ptr<AVController> _player;
    std::weak_ptr<ZRNHelmoServiceProvider> _serviceProvider;
};

}  // namespace zornic
