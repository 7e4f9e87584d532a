#include "ControllerFixture.h"
#include "Platform/Toolkit/TabBarController.h"
#include "Platform/Toolkit/TableView.h"

using namespace zornic;

namespace {

struct PickRecorder : TabBarControllerDelegate {
    explicit PickRecorder(Log& to) : log(to) {}
    void tabBarControllerDidSelectViewController(TabBarController&,
                                                 const std::shared_ptr<ViewController>& picked) override {
        log.push_back("picked:" + picked->identifier());
    }
    Log& log;
};

class TabBarControllerTest : public ControllerTest {
protected:
    void SetUp() override {
        for (int i = 0; i < 10; ++i) {
            screens.push_back(screenNamed(std::string(1, static_cast<char>('a' + i))));
            screens.back()->setTabBarItem(TabBarItem{screens.back()->identifier(), {}, {}});
        }
        tabs->setDelegate(delegate);
    }
    std::vector<std::shared_ptr<ViewController>> first(std::size_t count) const {
        return {screens.begin(), screens.begin() + static_cast<std::ptrdiff_t>(count)};
    }
    void press(std::size_t tab) {
        tabs->tabBar()->buttons().at(tab)->sendActions(ControlEvent::TouchUpInside);
        window->takeDamage();
    }
    std::string tabTitles() const {
        std::string titles;
        for (const auto& button : tabs->tabBar()->buttons()) titles += button->item().title;
        return titles;
    }

    std::vector<std::shared_ptr<ViewController>> screens;
    std::shared_ptr<PickRecorder> delegate = std::make_shared<PickRecorder>(log);
    std::shared_ptr<TabBarController> tabs = make<TabBarController>();
};

}  // namespace

TEST_F(TabBarControllerTest, ATabShowsItsScreenAndScreensHearOfIt) {
    tabs->setViewControllers(first(3));
    show(tabs);
    press(1);
    EXPECT_EQ(events(), "a.will- a.did- b.will+ b.did+ picked:b");
    EXPECT_EQ(screens[1]->view()->frame(), (Rect{0, 0, 800, 436}));
    press(1);
    EXPECT_EQ(events(), "picked:b");

    tabs->setViewControllers({screens[2], screens[1], screens[1], screens[0], screens[2]});  // twice the same
    EXPECT_EQ(tabs->viewControllers().size(), 5u);
    EXPECT_EQ(tabTitles(), "cba");
    EXPECT_EQ(tabs->selectedViewController(), screens[1]);
    EXPECT_EQ(events(), "");

    const auto another = screenNamed("b");
    tabs->setViewControllers({screens[0], another});  // the same by its identifier
    EXPECT_EQ(events(), "b.will- b.did- b.will+ b.did+");
    EXPECT_EQ(tabs->selectedViewController(), another);
    EXPECT_FALSE(screens[1]->parentViewController() || screens[1]->view()->superview());
    tabs->setViewControllers({screens[3]});
    EXPECT_EQ(events(), "b.will- b.did- d.will+ d.did+");
    tabs->setViewControllers({});
    EXPECT_EQ(events(), "d.will- d.did-");
    EXPECT_FALSE(tabs->selectedViewController());
}

TEST_F(TabBarControllerTest, WhatDoesNotFitIsListedUnderMore) {
    tabs->setViewControllers(screens);
    show(tabs);
    EXPECT_EQ(tabTitles(), "abcdefghMore");
    tabs->moreNavigationController()->setTabBarItem(TabBarItem{"Rest", {}, {}});
    EXPECT_EQ(tabTitles(), "abcdefghRest");
    press(8);
    events();
    const auto list = std::dynamic_pointer_cast<TableView>(tabs->moreListController()->view());
    ASSERT_TRUE(list);
    ASSERT_EQ(list->numberOfRowsInSection(0), 2u);
    EXPECT_EQ(list->visibleCells().at(1)->textLabel()->text(), "j");
    list->rowWasActivated(IndexPath::forRow(1, 0));
    settle();
    EXPECT_EQ(events(), "j.will+ picked:j j.did+");
    EXPECT_EQ(tabs->selectedViewController(), screens[9]);
    EXPECT_FALSE(tabs->moreNavigationController()->isNavigationBarHidden());

    press(0);
    press(8);  // as it was left
    EXPECT_EQ(tabs->selectedViewController(), screens[9]);
    press(8);  // once more: back to the list
    settle();
    EXPECT_EQ(tabs->selectedViewController(), tabs->moreNavigationController());
    EXPECT_TRUE(tabs->moreNavigationController()->isNavigationBarHidden());
    list->rowWasActivated(IndexPath::forRow(0, 0));
    settle();
    EXPECT_TRUE(window->pressBack());
    settle();
    EXPECT_EQ(tabs->selectedViewController(), tabs->moreNavigationController());
    EXPECT_FALSE(window->pressBack());
}

TEST_F(TabBarControllerTest, TheSelectedScreenStaysWhenTheRoomChanges) {
    tabs->setViewControllers(first(9));
    show(tabs);
    EXPECT_EQ(tabs->overflowViewControllers().size(), 0u);
    press(8);
    events();
    tabs->setAccessoryView(make<View>(Rect{0, 0, 110, 44}));
    window->takeDamage();
    EXPECT_EQ(tabTitles(), "abcdefgMore");
    EXPECT_EQ(tabs->accessoryView()->frame(), (Rect{690, 0, 110, 44}));
    EXPECT_EQ(tabs->selectedViewController(), screens[8]);
    EXPECT_TRUE(screens[8]->hasAppeared() && screens[8]->view()->window());
    EXPECT_EQ(tabs->tabBar()->selectedIndex(), 7u);

    tabs->setAccessoryView(nullptr);
    window->takeDamage();
    EXPECT_EQ(tabs->selectedViewController(), screens[8]);
    EXPECT_EQ(screens[8]->parentViewController(), tabs.get());
    EXPECT_TRUE(screens[8]->hasAppeared());
    screen->setSize({400, 240}, 1);
    window->screenDidChange();
    window->takeDamage();
    EXPECT_EQ(tabTitles(), "abcMore");
    EXPECT_EQ(tabs->selectedViewController(), screens[8]);
    for (const auto& button : tabs->tabBar()->buttons()) EXPECT_GE(button->frame().width(), 84);
}
