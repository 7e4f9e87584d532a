#include "Platform/Foundation/RunLoop.h"
#include "Platform/Toolkit/Button.h"
#include "Platform/Toolkit/ViewController.h"
#include "Platform/Toolkit/Window.h"
#include "Tests/Support/RecordingCanvas.h"

using namespace zornic;

namespace {

struct ProbeView : View {
    using View::View;
    void layoutSubviews() override {
        ++layouts;
        if (layouts <= marksAgain) setNeedsLayout();
        if (onLayout) onLayout();
    }
    void didMoveToWindow() override {
        moves.push_back(window() != nullptr);
        if (onMove) onMove();
    }
    bool canBecomeFirstResponder() const override { return true; }
    int layouts = 0, marksAgain = 0;
    std::vector<bool> moves;
    Task onLayout, onMove;
};

struct ViewTest : testing::Test {
    ViewTest() {
        window->setWindowHidden(false);
        window->takeDamage();
    }
    ManualClock clock;
    RunLoop loop{clock};
    std::shared_ptr<Window> window = make<Window>(Rect{0, 0, 800, 480});
};

}  // namespace

TEST_F(ViewTest, ResizesByMaskWithItsParent) {
    using namespace Autoresizing;
    struct Case {
        unsigned mask;
        Rect before, after;  // in a parent that grows from 100 x 100 to 200 x 300
    };
    const Case cases[] = {
        {None, {10, 10, 20, 20}, {10, 10, 20, 20}},
        {FlexibleWidth | FlexibleHeight, {12, 0, 76, 100}, {12, 0, 176, 300}},
        {FlexibleLeftMargin | FlexibleTopMargin, {70, 80, 30, 20}, {170, 280, 30, 20}},
        {FlexibleLeftMargin | FlexibleRightMargin, {20, 0, 20, 100}, {45, 0, 20, 100}},
        {FlexibleLeftMargin | FlexibleWidth | FlexibleRightMargin, {25, 0, 50, 10}, {50, 0, 100, 10}},
    };
    for (const Case& c : cases) {
        const auto parent = make<View>(Rect{0, 0, 100, 100}), child = make<View>(c.before);
        parent->addSubview(child);
        child->setAutoresizingMask(c.mask);
        parent->setFrame({5, 5, 200, 300});
        EXPECT_EQ(child->frame(), c.after) << c.mask;
        parent->setBounds({0, 0, 100, 100});
        EXPECT_EQ(child->frame(), c.before) << c.mask;
    }
    // A screen made before its display is known keeps its margins through size zero.
    const auto screen = make<View>(), title = make<View>(Rect{12, 0, -24, 72});
    screen->addSubview(title);
    title->setAutoresizingMask(FlexibleWidth);
    screen->setFrame({0, 0, 800, 480});
    EXPECT_EQ(title->frame(), Rect(12, 0, 776, 72));
}

TEST_F(ViewTest, TreeIsConsistentWhenItMovesToAWindow) {
    const auto parent = make<ProbeView>(Rect{0, 0, 100, 100}), child = make<ProbeView>(Rect{0, 0, 10, 10});
    parent->addSubview(child);
    parent->onMove = [&] { EXPECT_EQ(child->window(), parent->window()); };
    window->addSubview(parent);
    EXPECT_TRUE(child->becomeFirstResponder());
    const auto other = make<View>();
    window->addSubview(other);
    other->addSubview(child);  // inside the window: no leaving in between
    EXPECT_EQ(child->moves, std::vector{true});
    EXPECT_TRUE(child->isFirstResponder());
    other->removeFromSuperview();
    EXPECT_EQ(child->moves, (std::vector{true, false}));
    EXPECT_EQ(window->firstResponder(), nullptr);

    window->addSubview(child);
    child->onMove = [&] { parent->removeFromSuperview(); };
    window.reset();  // children that others own outlive it
    EXPECT_EQ(child->superview(), nullptr);
    EXPECT_EQ(child->window(), nullptr);
    EXPECT_EQ(parent->window(), nullptr);
    EXPECT_EQ(child->layer()->superlayer(), nullptr);
    child->setFrame({1, 1, 1, 1});
    child->setNeedsLayout();
}

TEST_F(ViewTest, LayersFollowTheOrderOfSubviewsUnlessMovedByHand) {
    const auto a = make<View>(), b = make<View>(), c = make<View>();
    for (const auto& view : {a, b}) window->addSubview(view);
    window->insertSubviewBelow(c, *b);
    const auto layers = [&] {
        std::string order;
        for (const auto& layer : window->layer()->sublayers())
            order += layer == a->layer() ? 'a' : layer == b->layer() ? 'b' : layer == c->layer() ? 'c' : '.';
        return order;
    };
    EXPECT_EQ(layers(), "acb");
    window->bringSubviewToFront(a);
    EXPECT_EQ(layers(), "cba");
    window->insertSubview(a, 0);
    EXPECT_EQ(layers(), "acb");
    window->insertSubviewBelow(a, *b);
    EXPECT_EQ(layers(), "cab");
    window->layer()->addSublayer(c->layer());
    EXPECT_EQ(layers(), "abc");
    EXPECT_EQ(window->subviews().front(), c);
    window->insertSubviewBelow(b, *c);
    EXPECT_EQ(layers(), "abc");
}

TEST_F(ViewTest, LaysOutWhatIsMarkedAndSettles) {
    const auto parent = make<ProbeView>(Rect{0, 0, 100, 100}), child = make<ProbeView>(Rect{0, 0, 10, 10});
    parent->addSubview(child);
    window->addSubview(parent);
    window->takeDamage();
    EXPECT_EQ(parent->layouts, 1);
    EXPECT_FALSE(window->needsFrame());

    child->setNeedsLayout();
    EXPECT_TRUE(window->needsFrame());
    window->takeDamage();
    EXPECT_EQ(child->layouts, 2);
    EXPECT_EQ(parent->layouts, 1);  // only what is marked

    child->onLayout = [&] { parent->setFrame({0, 0, 100, 200}); };  // marks above itself
    child->setNeedsLayout();
    window->takeDamage();
    EXPECT_EQ(parent->layouts, 2);
    EXPECT_FALSE(parent->needsLayout());

    child->onLayout = nullptr;
    child->marksAgain = 1000;  // never content: the frame comes all the same
    child->setNeedsLayout();
    window->takeDamage();
    EXPECT_LT(child->layouts, 20);
}

TEST_F(ViewTest, ControllerFramesTheLayoutOfItsView) {
    struct Controller : ViewController {
        void viewWillLayoutSubviews() override { calls += "will "; }
        void viewDidLayoutSubviews() override { calls += "did"; }
        std::string calls;
    };
    const auto controller = make<Controller>();
    const auto view = make<ProbeView>(Rect{0, 0, 100, 100});
    view->onLayout = [&] { controller->calls += "layout "; };
    controller->setView(view);
    view->setNeedsLayout();
    controller->calls.clear();
    view->layoutIfNeeded();
    EXPECT_EQ(controller->calls, "will layout did");
}

TEST_F(ViewTest, TouchFindsTheTopmostViewThatTakesIt) {
    const auto ground = make<View>(Rect{0, 100, 400, 200}), cover = make<View>(Rect{0, 0, 100, 100});
    const auto button = make<Button>(), neighbour = make<Button>();
    button->setFrame({200, 20, 20, 20});
    neighbour->setFrame({230, 20, 20, 20});
    window->addSubview(ground);
    for (const std::shared_ptr<View>& view :
         {std::shared_ptr<View>(neighbour), std::shared_ptr<View>(button), cover})
        ground->addSubview(view);
    const auto at = [&](double x, double y) { return window->hitTest({x, y}); };

    EXPECT_EQ(at(50, 150), cover);
    for (const auto& hide : std::vector<std::function<void(bool)>>{
             [&](bool on) { cover->setHidden(on); }, [&](bool on) { cover->setAlpha(on ? 0 : 1); },
             [&](bool on) { cover->setUserInteractionEnabled(!on); }}) {
        hide(true);
        EXPECT_EQ(at(50, 150), ground);
        hide(false);
    }
    EXPECT_EQ(at(190, 130), button);     // small: can be hit around its bounds
    EXPECT_EQ(at(225, 130), button);     // between two: the one on top
    EXPECT_EQ(at(231, 130), neighbour);  // but not through its neighbour
    cover->setFrame({0, -50, 100, 100});
    EXPECT_EQ(at(50, 60), cover);  // content that runs up under a bar
    ground->setClipsToBounds(true);
    EXPECT_EQ(at(50, 60), window);
}

TEST_F(ViewTest, OnlyWhatChangesOnDisplayIsDamaged) {
    const auto list = make<View>(Rect{0, 44, 800, 436}), row = make<View>(Rect{0, 500, 800, 44});
    list->setClipsToBounds(true);
    list->addSubview(row);
    window->addSubview(list);
    window->takeDamage();
    row->setNeedsDisplay();
    EXPECT_TRUE(window->takeDamage().empty());  // scrolled out
    list->setBounds({0, 400, 800, 436});
    window->takeDamage();
    row->setNeedsDisplay({10, 0, 20, 44});
    EXPECT_EQ(window->takeDamage(), std::vector{Rect(10, 144, 20, 44)});
    EXPECT_EQ(row->convertToWindow(row->bounds()), Rect(0, 144, 800, 44));
    EXPECT_EQ(row->convertFromWindow(Point{10, 150}), (Point{10, 6}));
    row->removeFromSuperview();
    EXPECT_EQ(window->takeDamage(), std::vector{Rect(0, 144, 800, 44)});
}

TEST_F(ViewTest, TintComesFromTheNearestAncestorThatHasOne) {
    const auto parent = make<View>(), child = make<View>();
    const auto button = make<Button>(ButtonType::System);
    parent->addSubview(child);
    child->addSubview(button);
    parent->setTintColor(Color::whiteColor());
    EXPECT_EQ(button->titleLabel()->textColor(), Color::whiteColor());
    child->setTintColor(Color::blackColor());
    EXPECT_EQ(button->titleLabel()->textColor(), Color::blackColor());
    button->removeFromSuperview();
    window->addSubview(button);
    EXPECT_EQ(button->titleLabel()->textColor(), _externalSystemTealColor());
}
