#include "Platform/LibraryKit/NowPlayingNavigationItem.h"

#include "Platform/Foundation/PlatformText.h"
#include "Platform/Foundation/WeakMaps.h"
#include "Platform/Toolkit/Button.h"

namespace zornic {
namespace {

/** Keeps one screen's bar item in step with a player. */
class NowPlayingNavigationItem : public Object {
public:
    NowPlayingNavigationItem(std::weak_ptr<ViewController> screen, std::shared_ptr<AVController> player,
                             std::function<std::shared_ptr<ViewController>()> makeScreen)
        : _screen(std::move(screen)), _player(std::move(player)), _makeScreen(std::move(makeScreen)) {}

    void didMake() override {
        Object::didMake();
        const auto button = make<Button>(ButtonType::System);
        button->setTitle(platformText("NOW_PLAYING"), ControlState::Normal);
        button->sizeToFit();
        button->addTarget(this, &NowPlayingNavigationItem::open, ControlEvent::TouchUpInside);
        _item = make<BarButtonItem>(button);
        _observation = NotificationCenter::defaultCenter().observe(
            AVControllerItemChangedNotification, _player.get(), [this](const Notification&) { update(); });
        update();
    }

    void end() {
        _observation.reset();
        show(false);
    }

private:
    void update() { show(_player && _player->currentItem()); }
    void show(bool shown) {
        const auto screen = _screen.lock();
        if (!screen) return;
        const auto& navigationItem = screen->navigationItem();
        if (shown)
            navigationItem->setRightBarButtonItem(_item);
        else if (navigationItem->rightBarButtonItem() == _item)
            navigationItem->setRightBarButtonItem(nullptr);
    }
    void open() {
        if (const auto screen = _screen.lock())
            if (const auto next = _makeScreen())
                screen->presentViewControllerWithTransition(next, PresentationTransition::Rise);
    }

    const std::weak_ptr<ViewController> _screen;
    const std::shared_ptr<AVController> _player;
    const std::function<std::shared_ptr<ViewController>()> _makeScreen;
    std::shared_ptr<BarButtonItem> _item;
    Observation _observation;
};

WeakKeyMap<ViewController, std::shared_ptr<NowPlayingNavigationItem>>& shownItems() {
    static WeakKeyMap<ViewController, std::shared_ptr<NowPlayingNavigationItem>> items;
    return items;
}

}  // namespace

void beginShowingNowPlayingNavigationItem(const std::shared_ptr<ViewController>& screen,
                                          const std::shared_ptr<AVController>& player,
                                          std::function<std::shared_ptr<ViewController>()> makeScreen) {
    endShowingNowPlayingNavigationItem(screen);
    shownItems().set(screen, make<NowPlayingNavigationItem>(screen, player, std::move(makeScreen)));
}

void endShowingNowPlayingNavigationItem(const std::shared_ptr<ViewController>& screen) {
    if (const auto item = shownItems().get(screen)) item->end();
    shownItems().remove(screen);
}

}  // namespace zornic
