#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Toolkit/NavigationItem.h"
#include "Platform/Toolkit/TabBarItem.h"
#include "Platform/Toolkit/TransitionCoordinator.h"
#include "Platform/Toolkit/View.h"

namespace zornic {

class NavigationController;
class Presentation;
class TabBarController;

/** Numbers of presentations' transitions. */
namespace PresentationTransition {
inline constexpr int None = 0, Rise = 1, Fall = 2;
}

/** How a presented screen lies over its presenter. */
enum class PresentationStyle {
    /** Covers it: the presenter disappears, and appears again after the dismissal. */
    FullScreen,
    /** Leaves it on view (an alert): the presenter's appearance does not change. */
    OverCurrent
};

/** A screen: its view, made when first asked for, and the moments of its appearance. Main thread. */
class ViewController : public Object {
public:
    ViewController() = default;
    ~ViewController() override;

    // View
    /** Made on first use: `loadView`, then `viewDidLoad`. */
    const std::shared_ptr<View>& view();
    bool isViewLoaded() const { return _view != nullptr; }
    void setView(std::shared_ptr<View> view);
    void loadViewIfNeeded() { view(); }
    /** Makes the view and sets it; an empty view that fills its parent by default. */
    virtual void loadView();
    virtual void viewDidLoad() {}

    // Appearance; overrides call their base
    virtual void viewWillAppear(bool animated);
    virtual void viewDidAppear(bool animated);
    virtual void viewWillDisappear(bool animated);
    virtual void viewDidDisappear(bool animated);
    virtual void viewWillLayoutSubviews() {}
    virtual void viewDidLayoutSubviews() {}
    /** Containers tell a child that it comes or goes, and when that is done; will and did calls follow, for
       its own children too. Telling it the opposite before the end (a swipe back that is let go) turns it
       round. */
    void beginAppearanceTransition(bool appearing, bool animated);
    void endAppearanceTransition();
    bool isOnView() const {
        return _appearance == Appearance::Appeared || _appearance == Appearance::Appearing;
    }
    /** On view, with nothing under way. */
    bool hasAppeared() const { return _appearance == Appearance::Appeared; }

    // Description
    virtual std::string title() const { return _title; }
    /** Also the navigation item's title. */
    virtual void setTitle(const std::string& title);
    const std::shared_ptr<NavigationItem>& navigationItem();
    const std::optional<TabBarItem>& tabBarItem() const { return _tabBarItem; }
    void setTabBarItem(std::optional<TabBarItem> item);
    /** The library-UI kit's identifier of the screen; empty for none. */
    const std::string& identifier() const { return _identifier; }
    void setIdentifier(std::string identifier) { _identifier = std::move(identifier); }
    /** Edges under bars to which its view extends; a set as in `attachEdges`. */
    unsigned edgesForExtendedLayout() const { return _edgesForExtendedLayout; }
    void setEdgesForExtendedLayout(unsigned edges) { _edgesForExtendedLayout = edges; }

    // Tree
    ViewController* parentViewController() const { return _parent; }
    const std::vector<std::shared_ptr<ViewController>>& childViewControllers() const { return _children; }
    /** Takes it from another parent and calls its will-move; the caller places its view and calls did-move. A
       child of a controller on view that forwards its appearance appears at once. */
    void addChildViewController(const std::shared_ptr<ViewController>& child);
    /** After the caller's will-move to none; a child on view disappears, then hears did-move. */
    void removeFromParentViewController();
    virtual void willMoveToParentViewController(ViewController*) {}
    virtual void didMoveToParentViewController(ViewController*) {}
    /** The nearest container of that kind above it; none when there is none. */
    virtual NavigationController* navigationController() const;
    TabBarController* tabBarController() const;
    /** The topmost container around it; itself when it is in none. */
    ViewController* outermostViewController();

    // Presentation
    /** What this or a container around it presents; none when nothing is presented. */
    std::shared_ptr<ViewController> presentedViewController() const;
    /** The controller that presented this one or the container it is in; none when not presented. */
    std::shared_ptr<ViewController> presentingViewController() const;
    /** Lays `controller` over this one, a full screen over the outermost container around it. Refused,
       without a word, while the one that would present it already presents something. */
    void presentViewController(const std::shared_ptr<ViewController>& controller, bool animated,
                               Task completion = {});
    void presentViewControllerWithTransition(const std::shared_ptr<ViewController>& controller,
                                             int transition, Task completion = {});
    /** Takes away what this or a container around it presents (and what that presents); when nothing is
       presented, its presenter does so. */
    void dismissViewController(bool animated, Task completion = {});
    void dismissViewControllerWithTransition(int transition, Task completion = {});
    PresentationStyle presentationStyle() const { return _presentationStyle; }
    void setPresentationStyle(PresentationStyle style) { _presentationStyle = style; }
    int modalTransitionStyle() const { return _modalTransitionStyle; }
    void setModalTransitionStyle(int style) { _modalTransitionStyle = style; }
    /** Number of the last transition with which this was presented or dismissed; nullopt before. */
    std::optional<int> lastPresentationTransition() const { return _lastTransition; }
    /** The transition in which it or a container around it takes part; none when all stand still. */
    std::shared_ptr<TransitionCoordinator> transitionCoordinator() const;
    void setTransitionCoordinator(std::shared_ptr<TransitionCoordinator> coordinator);

    // Focus
    /** Where the knob's focus goes first: a focusable view or a list; by default what the first child with a
       preference answers. None: the first in reading order. */
    virtual std::shared_ptr<View> preferredFocusedItem();
    /** Asks the window to find the focus anew. */
    void setNeedsFocusUpdate();
    /** The tab container shows it by the driver's choice; whether it took the focus. */
    virtual bool _viewControllerWasSelected() { return false; }
    /** The controller on view inside a container: itself unless it is one. */
    virtual std::shared_ptr<ViewController> contentViewController();
    /** The car's back button: whether the screen did something with it. Containers try their innermost first.
     */
    virtual bool handleBack() { return false; }

protected:
    /** False for containers which tell only one child of their appearance. */
    virtual bool shouldForwardAppearanceToChild(const ViewController&) const { return true; }

private:
    enum class Appearance { Disappeared, Appearing, Appeared, Disappearing };
    std::vector<std::shared_ptr<ViewController>> forwardedChildren() const;
    void dismissNestedPresentations();

    std::shared_ptr<View> _view;
    std::string _title, _identifier;
    std::shared_ptr<NavigationItem> _navigationItem;
    std::optional<TabBarItem> _tabBarItem;
    ViewController* _parent = nullptr;
    std::vector<std::shared_ptr<ViewController>> _children;
    std::shared_ptr<ViewController> _presented;
    /** By which this presents, until what it presented is gone from view. */
    std::shared_ptr<Presentation> _presentation;
    /** By which this is presented. */
    std::weak_ptr<Presentation> _shownBy;
    std::weak_ptr<TransitionCoordinator> _transitionCoordinator;
    std::optional<int> _lastTransition;
    Appearance _appearance = Appearance::Disappeared;
    bool _appearanceAnimated = false;
    PresentationStyle _presentationStyle = PresentationStyle::FullScreen;
    int _modalTransitionStyle = 0;
    unsigned _edgesForExtendedLayout = AllEdges;
};

}  // namespace zornic
