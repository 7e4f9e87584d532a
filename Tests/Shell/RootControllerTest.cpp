#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Tests/Support/FakeServiceProvider.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ViewControllerZornicAdditions.h"
#include "View Controllers/ZRNRootController.h"
#include "View Controllers/ZRNSongsViewController.h"

namespace zornic {
namespace {

class RootControllerTest : public testing::Test, protected ScreenFixture {
protected:
    RootControllerTest() {
        window->setWindowHidden(true);  // the display belongs to the root controller
        ZRNSetSharedAVPlayer(nullptr);
    }
};

TEST_F(RootControllerTest, ItOwnsTheDisplayForAsLongAsItLives) {
    addSongs({"A"});
    auto root = make<ZRNRootController>(screen, nullptr);
    const auto display = root->helmoWindow();
    ASSERT_TRUE(display);
    EXPECT_EQ(display->frame(), screen->bounds());
    EXPECT_EQ(Window::onScreen(*screen), display);
    EXPECT_EQ(display->rootViewController(), root->browserViewController());

    root->setPlayer(player);
    play(MediaQuery::songsQuery());
    auto provider = make<FakeServiceProvider>();
    root->setServiceProvider(provider);
    const std::weak_ptr<ViewController> browser = root->browserViewController(),
                                        nowPlaying = root->browserViewController()->presentedViewController();
    EXPECT_FALSE(nowPlaying.expired());

    root = nullptr;
    EXPECT_TRUE(display->isWindowHidden());
    EXPECT_EQ(display->rootViewController(), nullptr);
    EXPECT_EQ(display->screen(), nullptr);
    advance(1);
    EXPECT_TRUE(browser.expired());
    EXPECT_TRUE(nowPlaying.expired());
    const std::weak_ptr<Object> held = std::exchange(provider, nullptr);
    EXPECT_TRUE(held.expired());
    EXPECT_EQ(ZRNSharedAVPlayer(), player) << "the last display's player stays the shared one";
}

TEST_F(RootControllerTest, APlayerIsHandedOnOnce) {
    const auto query = addSongs({"A"});
    const auto provider = make<FakeServiceProvider>();
    const auto root = make<ZRNRootController>(screen, nullptr);
    root->setServiceProvider(provider);
    play(query);
    root->setPlayer(player);
    EXPECT_EQ(ZRNSharedAVPlayer(), player);
    const auto& browser = root->browserViewController();
    EXPECT_TRUE(browser->presentedViewController());
    browser->dismissViewController(false);
    ZRNSetSharedAVPlayer(nullptr);
    root->setPlayer(player);
    EXPECT_EQ(ZRNSharedAVPlayer(), nullptr);
    EXPECT_FALSE(browser->presentedViewController());
    root->showNowPlaying();
    EXPECT_EQ(browser->presentedViewController()->lastPresentationTransition(), PresentationTransition::None);
}

TEST_F(RootControllerTest, WithoutAScreenEverythingButTheWindowWorks) {
    const auto root = make<ZRNRootController>(nullptr, nullptr);
    EXPECT_EQ(root->helmoWindow(), nullptr);
    root->showNowPlaying();
    root->setPlayer(player);
    const auto provider = make<FakeServiceProvider>();
    root->setServiceProvider(provider);
    const auto& browser = root->browserViewController();
    play(addSongs({"A"}));
    root->showNowPlaying();
    EXPECT_TRUE(browser->presentedViewController());
}

TEST_F(RootControllerTest, RadioScreensAreTold) {
    const auto root = make<ZRNRootController>(screen, nullptr);
    int told = 0;
    const auto observation = NotificationCenter::defaultCenter().observe(
        "ZRNRootControllerRadioNotificicationName", nullptr, [&](const auto& notification) {
            told += notification.sender == nullptr && notification.userInfo.empty();
        });
    root->reloadRadio();
    EXPECT_EQ(told, 1);
}

TEST_F(RootControllerTest, ScreensAreRegisteredOnceAProcess) {
    addSongs({"A"});
    make<ZRNRootController>(screen, nullptr);
    auto& registry = ScreenRegistry::shared();
    ASSERT_TRUE(registry.viewControllerForIdentifier(ZRNSongsViewControllerIdentifier));
    // A host's own way of showing songs outlasts the next car.
    registry.registerIdentifierWithAttributesDefaultQueryCreationHandler(ZRNSongsViewControllerIdentifier, {},
                                                                         nullptr);
    const auto second = make<ZRNRootController>(screen, nullptr);
    EXPECT_EQ(registry.viewControllerForIdentifier(ZRNSongsViewControllerIdentifier), nullptr);
    ZRN_registerViewControllerIdentifiers();
}

}  // namespace
}  // namespace zornic
