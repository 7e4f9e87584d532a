#include "Platform/Toolkit/Label.h"

using namespace zornic;
using Attribute = LayoutAttribute;

namespace {

template <class T>
std::shared_ptr<T> placed(const std::shared_ptr<View>& parent) {
    auto view = make<T>();
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    parent->addSubview(view);
    return view;
}

}  // namespace

TEST(LayoutConstraint, TwoLinesStandAsABlockAroundTheMiddle) {
    const auto view = make<View>(Rect{0, 0, 400, 300});
    const auto spacer = placed<View>(view);  // first, so that its stale height must not count
    const auto title = placed<Label>(view), subtitle = placed<Label>(view);
    title->setFont(Font::systemFont(28));
    title->setText("No Music");
    subtitle->setFont(Font::systemFont(16));
    subtitle->setNumberOfLines(2);
    subtitle->setText("Nothing here");
    view->addConstraints({{subtitle, Attribute::FirstBaseline, title, Attribute::LastBaseline, 1, 28},
                          {title, Attribute::Right, spacer, Attribute::Right},
                          {title, Attribute::Left, spacer, Attribute::Left},
                          {subtitle, Attribute::Right, spacer, Attribute::Right},
                          {subtitle, Attribute::Left, spacer, Attribute::Left},
                          {spacer, Attribute::Top, title, Attribute::Top},
                          {spacer, Attribute::Bottom, subtitle, Attribute::Bottom},
                          {spacer, Attribute::Left, view, Attribute::Left, 1, 12},
                          {spacer, Attribute::Right, view, Attribute::Right, 1, -12},
                          {spacer, Attribute::CenterY, view, Attribute::CenterY, 1, -11}});
    const auto expectBlock = [&](double width, double height, int subtitleLines) {
        view->layoutIfNeeded();
        EXPECT_NEAR(title->frame().x(), 12, 1e-6);
        EXPECT_NEAR(title->frame().width(), width - 24, 1e-6);
        EXPECT_NEAR(subtitle->frame().width(), width - 24, 1e-6);
        EXPECT_NEAR(title->frame().height(), 34, 1e-6);
        EXPECT_NEAR(subtitle->frame().height(), subtitleLines == 1 ? 20 : 39, 1e-6);
        EXPECT_NEAR((title->frame().y() + subtitle->frame().maxY()) / 2, height / 2 - 11, 1e-6);
        const double from = title->frame().maxY() - title->lastBaselineFromBottom();
        EXPECT_NEAR(subtitle->frame().y() + subtitle->firstBaselineFromTop() - from, 28, 1e-6);
    };
    expectBlock(400, 300, 1);
    subtitle->setText("Music that you buy or copy to the car's library is shown here");
    expectBlock(400, 300, 2);
    view->setFrame({0, 0, 800, 436});
    expectBlock(800, 436, 1);
}

TEST(LayoutConstraint, HigherPriorityWinsAndTheRestKeepsItsPlace) {
    const auto view = make<View>(Rect{0, 0, 200, 100});
    const auto box = placed<View>(view);
    box->setFrame({7, 8, 30, 40});
    view->addConstraints({{box, Attribute::Width, {}, Attribute::Left, 1, 90, 250},
                          {box, Attribute::Width, view, Attribute::Width, 0.5, -20},
                          {box, Attribute::Height, box, Attribute::Width, 0.25, 0}});
    view->layoutIfNeeded();
    EXPECT_EQ(box->frame(), Rect(7, 8, 80, 20));

    auto gone = placed<View>(view);
    view->addConstraint({box, Attribute::Left, gone, Attribute::Right, 1, 50});
    gone->removeFromSuperview();
    gone.reset();
    view->setNeedsLayout();
    view->layoutIfNeeded();
    EXPECT_EQ(box->frame(), Rect(7, 8, 80, 20));
}

TEST(LayoutConstraint, AttachedEdgesFollowTheParent) {
    const auto view = make<View>(Rect{50, 50, 200, 100}), whole = make<View>(),
               strip = make<View>(Rect{0, 0, 10, 30});
    const auto fixed = make<View>(Rect{20, 0, 60, 10});
    for (const auto& child : {whole, strip, fixed}) view->addSubview(child);
    whole->attachEdges(*view, AllEdges, {1, 2, 3, 4});
    strip->attachEdges(*view, 2 | 4 | 8, {});
    const auto beside = placed<View>(view);
    view->addConstraint({beside, Attribute::Left, fixed, Attribute::Right, 1, 5});
    view->layoutIfNeeded();
    EXPECT_EQ(whole->frame(), Rect(2, 1, 194, 96));
    EXPECT_EQ(strip->frame(), Rect(0, 70, 200, 30));
    EXPECT_EQ(beside->frame().x(), 85);
    EXPECT_EQ(fixed->frame(), Rect(20, 0, 60, 10));
    view->setFrame({0, 0, 100, 50});
    view->layoutIfNeeded();
    EXPECT_EQ(whole->frame(), Rect(2, 1, 94, 46));
    EXPECT_EQ(strip->frame(), Rect(0, 20, 100, 30));
}
