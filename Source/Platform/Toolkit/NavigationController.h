#pragma once

#include "Platform/Toolkit/Animation.h"
#include "Platform/Toolkit/GestureRecognizer.h"
#include "Platform/Toolkit/NavigationBar.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

class NavigationTransition;

/** A stack of screens under one bar, the last on view. Pushed screens slide in; a swipe from the left edge
   takes the top one back and can be let go half-way. Main thread. */
class NavigationController : public ViewController {
public:
    NavigationController();
    /** With its bottom screen; it is pushed in `didMake`. */
    explicit NavigationController(std::shared_ptr<ViewController> root);
    void didMake() override;
    ~NavigationController() override;

    const std::vector<std::shared_ptr<ViewController>>& viewControllers() const { return _stack; }
    /** None while empty. */
    std::shared_ptr<ViewController> topViewController() const;
    /** A screen that is already on the stack is not pushed again. */
    virtual void pushViewController(const std::shared_ptr<ViewController>& controller, bool animated);
    /** The bottom screen is never popped. Returns the popped one, or none. */
    std::shared_ptr<ViewController> popViewControllerAnimated(bool animated);
    /** Pops what lies over `controller`; nothing when it is not on the stack or on top. */
    void popToViewController(const std::shared_ptr<ViewController>& controller, bool animated);

    const std::shared_ptr<NavigationBar>& navigationBar();
    bool isNavigationBarHidden() const { return _barHidden; }
    void setNavigationBarHidden(bool hidden, bool animated);
    /** The bar's back item was pressed: true pops. */
    virtual bool navigationBarShouldPopItem(NavigationBar&, const std::shared_ptr<NavigationItem>&) {
        return true;
    }
    /** Shows Now Playing, where a subclass or a container above knows how; passed up the tree of controllers.
     */
    virtual void ZRN_pushNowPlayingViewControllerAnimated(bool animated);

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
    void backPressed();
    /** Pops the top screens from index `count` on, the last of them in sight. */
    std::shared_ptr<ViewController> popToCount(std::size_t count, bool animated, bool interactive);
    void startTransition(std::unique_ptr<NavigationTransition> transition);
    void changeWithoutView(const std::shared_ptr<ViewController>& from,
                           const std::shared_ptr<ViewController>& to, bool push);
    void settleTransition(bool cancelled);
    void finishTransition(bool cancelled);
    /** Whatever is under way ends now: as it was going, a swipe that is still held back where it was. */
    void endRunningTransition();
    void letGo(const std::shared_ptr<ViewController>& popped);
    void swipe(PanGestureRecognizer& recognizer);
    void swipeBegan();
    void layoutContent();
    void updateBar();
    Rect contentFrame() const;

    std::shared_ptr<ViewController> _rootToPush;
    std::vector<std::shared_ptr<ViewController>> _stack;
    std::shared_ptr<NavigationBar> _bar;
    std::shared_ptr<View> _contentView;
    std::shared_ptr<PanGestureRecognizer> _swipe;
    std::unique_ptr<NavigationTransition> _transition;
    /** Travel that counts as no progress, in points. */
    double _swipeStart = 0;
    bool _barHidden = false;
};

}  // namespace zornic
