#include "View Controllers/ZRNRootController.h"

#include <mutex>

#include "Utilities/ViewControllerZornicAdditions.h"
#include "Utilities/ZRNShared.h"

namespace zornic {

ZRNRootController::ZRNRootController(std::shared_ptr<Screen> screen,
                                     std::shared_ptr<TabBarController> hostTabBarController)
    : _screen(std::move(screen)), _hostTabBarController(std::move(hostTabBarController)) {}

void ZRNRootController::didMake() {
    Object::didMake();
    static std::once_flag registration;
    std::call_once(registration, ZRN_registerViewControllerIdentifiers);
    if (_screen) {
        _helmoWindow = make<Window>(_screen->bounds());
        _helmoWindow->setScreen(_screen);
        _helmoWindow->setWindowHidden(false);
    }
    _browserViewController = make<ZRNBrowserViewController>(std::exchange(_hostTabBarController, nullptr));
    _browserViewController->setServiceProvider(serviceProvider());
    if (_helmoWindow) _helmoWindow->setRootViewController(_browserViewController);
}

ZRNRootController::~ZRNRootController() {
    if (!_helmoWindow) return;
    _helmoWindow->setWindowHidden(true);
    _helmoWindow->setRootViewController(nullptr);
    _helmoWindow->setScreen(nullptr);
}

void ZRNRootController::setPlayer(const std::shared_ptr<AVController>& player) {
    if (player == _player) return;
    _player = player;
    _browserViewController->setPlayer(player);
    ZRNSetSharedAVPlayer(player);
}

void ZRNRootController::setServiceProvider(const std::shared_ptr<ZRNHelmoServiceProvider>& serviceProvider) {
    if (serviceProvider == _serviceProvider.lock()) return;
    _serviceProvider = serviceProvider;
    _browserViewController->setServiceProvider(serviceProvider);
}

void ZRNRootController::showNowPlaying() { _browserViewController->pushNowPlaying(false); }

void ZRNRootController::reloadRadio() {
    NotificationCenter::defaultCenter().post(ZRNRootControllerRadioNotificicationName, nullptr);
}

}  // namespace zornic
