#include "Platform/Toolkit/Layer.h"
#include "Tests/Support/RecordingCanvas.h"

using namespace zornic;

namespace {

/** Stands for the window: hears what is to be drawn again. */
struct Listener : LayerOwner {
    void drawLayer(Canvas&, const Rect&) override {}
    void layerDidChange(const Rect& area) override { damage = damage.united(area); }
    Rect takeDamage() { return std::exchange(damage, {}); }
    Rect damage;
};

std::shared_ptr<Layer> filled(const Rect& frame, Color color = Color::whiteColor()) {
    auto layer = make<Layer>();
    layer->setFrame(frame);
    layer->setBackgroundColor(color);
    return layer;
}

struct LayerTest : testing::Test {
    LayerTest() {
        root->setFrame({0, 0, 800, 480});
        root->setBackgroundColor(Color::blackColor());
    }
    Listener listener;
    std::shared_ptr<Layer> root = make<Layer>(&listener);
};

}  // namespace

TEST_F(LayerTest, CutOutReachesOnlyWhatItsSuperlayerDrew) {
    const auto button = filled({100, 100, 80, 40}), title = filled({10, 10, 60, 20}),
               focus = filled({0, 0, 80, 40});
    root->addSublayer(button);
    button->addSublayer(title);
    button->addSublayer(focus);
    button->addSublayer(title);  // to the top again
    title->setCompositingMode(CompositingMode::DestinationOut);

    RecordingCanvas canvas;
    root->render(canvas);
    ASSERT_EQ(canvas.groups.size(), 2u);
    const auto &cut = canvas.groups[0], &whole = canvas.groups[1];
    EXPECT_EQ(cut.mode, CompositingMode::DestinationOut);
    EXPECT_EQ(whole.mode, CompositingMode::SourceOver);
    EXPECT_EQ(whole.bounds, Rect(100, 100, 80, 40));
    ASSERT_EQ(canvas.fills.size(), 4u);
    EXPECT_FALSE(whole.holds(canvas.fills[0].step));  // the root's ground stays whole
    EXPECT_TRUE(whole.holds(cut.beginStep));
    EXPECT_LT(canvas.fills[2].step, cut.beginStep);  // the focus fill lies below what is cut out of it
    EXPECT_EQ(canvas.fills[3].area, Rect(110, 110, 60, 20));

    title->setHidden(true);
    RecordingCanvas without;
    root->render(without);
    EXPECT_TRUE(without.groups.empty());
    EXPECT_TRUE(canvas.isBalanced());
}

TEST_F(LayerTest, TranslucentOrFilteredTreeIsPutTogetherFirst) {
    const auto fill = filled({0, 0, 10, 10}), tree = filled({20, 0, 10, 10}),
               picture = filled({40, 0, 10, 10});
    for (const auto& layer : {fill, tree, picture}) root->addSublayer(layer);
    fill->setOpacity(0.5);
    tree->setOpacity(0.5);
    tree->addSublayer(filled({0, 0, 30, 5}));
    picture->setFilters({{ColorFilterType::Saturate, 1.592}});

    RecordingCanvas canvas;
    root->render(canvas);
    ASSERT_EQ(canvas.groups.size(), 2u);
    EXPECT_EQ(canvas.groups[0].opacity, 0.5);
    EXPECT_EQ(canvas.groups[0].bounds, Rect(20, 0, 30, 10));  // with the sublayer that reaches out
    EXPECT_EQ(canvas.groups[1].filters.size(), 1u);
    EXPECT_EQ(canvas.fills[1].color.alpha, 0.5);  // a lone fill needs no group
}

TEST_F(LayerTest, DrawsWhatShowsWhereItIsScrolledTo) {
    const auto list = filled({0, 44, 800, 100}), row = filled({0, 500, 800, 50}),
               gone = filled({0, 0, 800, 50});
    root->addSublayer(list);
    list->setMasksToBounds(true);
    list->setBoundsOrigin({0, 480});
    list->setPresentationOffset({10, 0});
    list->addSublayer(row);
    list->addSublayer(gone);
    RecordingCanvas canvas;
    root->render(canvas);
    ASSERT_EQ(canvas.fills.size(), 3u);
    EXPECT_EQ(canvas.fills[2].area, Rect(10, 64, 800, 50));
}

TEST_F(LayerTest, DamagesOldAndNewPlaceAsTheyShow) {
    const auto list = filled({0, 100, 400, 100}), row = filled({0, 0, 400, 50});
    root->addSublayer(list);
    list->addSublayer(row);
    listener.takeDamage();

    row->setFrame({0, 50, 400, 20});
    EXPECT_EQ(listener.takeDamage(), Rect(0, 100, 400, 70));
    list->setPresentationOffset({30, 0});
    EXPECT_EQ(listener.takeDamage(), Rect(0, 100, 430, 100));
    row->setBackgroundColor(Color::blackColor());
    EXPECT_EQ(listener.takeDamage(), Rect(30, 150, 400, 20));

    row->setFrame({0, 90, 400, 40});  // reaches out below the list
    listener.takeDamage();
    list->setHidden(true);
    EXPECT_EQ(listener.takeDamage(), Rect(30, 100, 400, 130));
    row->setBackgroundColor(Color::whiteColor());
    EXPECT_TRUE(listener.takeDamage().empty());  // nobody sees it
    list->setHidden(false);
    EXPECT_EQ(listener.takeDamage(), Rect(30, 100, 400, 130));

    list->setMasksToBounds(true);
    listener.takeDamage();
    row->setBackgroundColor(Color::blackColor());
    EXPECT_EQ(listener.takeDamage(), Rect(30, 190, 400, 10));
    row->removeFromSuperlayer();
    EXPECT_EQ(listener.takeDamage(), Rect(30, 190, 400, 10));
}
