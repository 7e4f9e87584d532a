#pragma once

#include "Platform/Foundation/Value.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Platform/Toolkit/TabBar.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

class TabBarController;

/** Hears of picks. Main thread. */
class TabBarControllerDelegate {
public:
    virtual ~TabBarControllerDelegate() = default;
    /** The driver picked a tab, or a row of the More list. */
    virtual void tabBarControllerDidSelectViewController(TabBarController&,
                                                         const std::shared_ptr<ViewController>&) {}
};

/** Several screens side by side, one on view, picked by tabs; those that don't fit are listed under More. The
   same screen may be given twice. Main thread. */
class TabBarController : public ViewController {
public:
    TabBarController() = default;
    void didMake() override;
    ~TabBarController() override;

    const std::vector<std::shared_ptr<ViewController>>& viewControllers() const { return _screens; }
    /** The selected screen stays selected when it is among the new ones (by object, then by identifier), else
     * the first. */
    void setViewControllers(std::vector<std::shared_ptr<ViewController>> screens);
    /** Screens that the driver may rearrange; the container itself offers no rearranging. */
    const std::vector<std::shared_ptr<ViewController>>& customizableViewControllers() const {
        return _customizable;
    }
    void setCustomizableViewControllers(std::vector<std::shared_ptr<ViewController>> screens);
    std::shared_ptr<ViewController> selectedViewController() const;
    void setSelectedViewController(const std::shared_ptr<ViewController>& screen);
    void setDelegate(std::weak_ptr<TabBarControllerDelegate> delegate) { _delegate = std::move(delegate); }
    const std::shared_ptr<TabBar>& tabBar();
    /** A view beside the tabs; none empties the slot. */
    std::shared_ptr<View> accessoryView() const { return _accessoryView; }
    void setAccessoryView(std::shared_ptr<View> view);
    /** The stack under the More tab: its bottom screen lists what did not fit. */
    const std::shared_ptr<NavigationController>& moreNavigationController() const { return _more; }
    std::shared_ptr<ViewController> moreListController() const;
    /** Screens that are listed under More, in order; empty when all fit. */
    const std::vector<std::shared_ptr<ViewController>>& overflowViewControllers() const { return _overflow; }
    /** The driver picked a row of the More list. */
    void pickUnderMore(const std::shared_ptr<ViewController>& screen);
    /** One of its screens got another tab item. */
    void tabBarItemDidChange();

    /** A value that a host container carries by name; none by default. */
    virtual Value valueForKey(const std::string& key) const;
    /** An ordered list of texts by name; nullopt when it has no such value. */
    virtual std::optional<std::vector<std::string>> textsForKey(const std::string& key) const;

    void loadView() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    void viewDidLayoutSubviews() override;
    std::shared_ptr<View> preferredFocusedItem() override;
    std::shared_ptr<ViewController> contentViewController() override;
    bool handleBack() override;

protected:
    bool shouldForwardAppearanceToChild(const ViewController&) const override { return false; }

private:
    /** Shares the screens out between tabs and More and shows `selected`, or the first when it is gone. */
    void updateTabs(const std::shared_ptr<ViewController>& selected);
    void distribute();
    void updateChildren();
    void updateBarItems();
    void select(const std::shared_ptr<ViewController>& screen);
    void show(const std::shared_ptr<ViewController>& screen);
    void placeShown();
    void pick(std::size_t index);
    void tellPicked(const std::shared_ptr<ViewController>& screen);
    bool isShowable(const std::shared_ptr<ViewController>& screen) const;

    std::vector<std::shared_ptr<ViewController>> _screens, _customizable;
    /** The screens, each once: with a tab of its own, and listed under More. */
    std::vector<std::shared_ptr<ViewController>> _direct, _overflow;
    /** What is on view below the bar: a screen, or the More stack. */
    std::shared_ptr<ViewController> _shown;
    std::shared_ptr<NavigationController> _more;
    std::shared_ptr<TabBar> _tabBar;
    std::shared_ptr<View> _accessoryView, _contentView;
    bool _updating = false;
    std::weak_ptr<TabBarControllerDelegate> _delegate;
};

}  // namespace zornic
