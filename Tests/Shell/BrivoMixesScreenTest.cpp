#include "Platform/Toolkit/NavigationController.h"
#include "Tests/Support/DrawnImageSource.h"
#include "Tests/Support/FakeServiceProvider.h"
#include "Tests/Support/ScreenFixture.h"
#include "View Controllers/ZRNBrivoMixesViewController.h"
#include "View Controllers/ZRNNowPlayingNavigationController.h"
#include "Views/ZRNAndOthersLabel.h"

namespace zornic {
namespace {

using Texts = std::vector<std::string>;

class BrivoMixesScreenTest : public testing::Test, protected ScreenFixture {
protected:
    BrivoMixesScreenTest() {
        for (const char* token : {"a", "b", "c", "d", "e"}) library->artwork.insert(token);
    }
    /** A mix of one song for each picture. */
    PersistentID addMix(const std::string& name, const Texts& tokens, const Texts& artists = {}) {
        std::vector<PersistentID> songs;
        for (const auto& token : tokens)
            songs.push_back(
                library->addSong("Song", "Artist", "Album", 1, {{MediaItemProperty::ArtworkToken, token}}));
        const auto mix = library->addPlaylist(name, songs, {{MediaPlaylistProperty::IsBrivoMix, true}});
        library->representativeArtists[mix] = artists;
        return mix;
    }
    TableView& open() {
        mixes = make<ZRNBrivoMixesViewController>(MediaQuery::brivoMixesQuery(), player, provider);
        stack = make<NavigationController>(mixes);
        show(stack);
        advance(0);  // for the pictures of the rows that it has now
        return *mixes->tableView();
    }
    /** The picture that a row shows; none without a view for it. */
    Image shown(std::uint64_t row) const {
        const auto cell = mixes->tableView()->cellForRowAtIndexPath({0, row});
        const auto view = std::dynamic_pointer_cast<ImageView>(cell->viewWithTag(500));
        return view ? view->image() : Image();
    }
    static const DrawnImageSource& drawing(const Image& image) {
        return dynamic_cast<const DrawnImageSource&>(*image.source());
    }
    /** The picture of a token as the screen has loaded it. */
    Image tile(const std::string& token) const {
        const auto catalog = make<ArtworkCatalog>(library, token);
        catalog->setFittingSize({9, 9});
        catalog->setDestinationScale(2);
        catalog->setCacheIdentifier("ZRNBrivoMixesViewController", mixes);
        return catalog->imageAtHand();
    }

    const std::shared_ptr<FakeServiceProvider> provider = make<FakeServiceProvider>();
    std::shared_ptr<ZRNBrivoMixesViewController> mixes;
    std::shared_ptr<NavigationController> stack;
};

TEST_F(BrivoMixesScreenTest, AMixNamesItsArtistsAndItsCoversStandInTwoColumns) {
    addMix("A", {"a", "a", "missing", "b", "c", "d"}, {"Anna", "Ben"});
    addMix("B", {"e"});
    addMix("C", {});
    library->addPlaylist("My own", {});
    auto& table = open();
    EXPECT_EQ(table.numberOfRowsInSection(0), 3U);
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 0})->accessibilityText(), "A, Based on music by Anna, Ben");
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 1})->accessibilityText(), "B");
    const Image three = shown(0);
    ASSERT_TRUE(three);
    EXPECT_EQ(three.size(), (Size{18, 18}));
    EXPECT_TRUE(drawing(three).isOpaque);
    const auto& images = drawing(three).canvas.images;
    ASSERT_EQ(images.size(), 3U) << "four pictures are asked for, all different; one of them is missing";
    EXPECT_EQ(images[0].area, Rect(0, 0, 9, 9));
    EXPECT_EQ(images[1].area, Rect(9, 0, 9, 9));
    EXPECT_EQ(images[2].area, Rect(0, 9, 9, 9));
    EXPECT_TRUE(images[0].image == tile("a") && images[1].image == tile("b") && images[2].image == tile("c"));

    EXPECT_EQ(shown(1).size(), (Size{18, 9}));
    ASSERT_TRUE(mixes->brivoImages().contains({0, 2}));
    EXPECT_EQ(mixes->brivoImages().at({0, 2}).size(), (Size{18, 0}));
}

TEST_F(BrivoMixesScreenTest, ARowsPictureIsMadeOnce) {
    addMix("A", {"a", "b"});
    auto& table = open();
    const Image made = shown(0);
    const auto loaded = library->loadedArtwork();
    ArtworkCatalog::evictAll();
    table.reloadData();
    window->layoutIfNeeded();
    EXPECT_EQ(shown(0), made);
    advance(0);
    EXPECT_EQ(library->loadedArtwork(), loaded);
    EXPECT_EQ(shown(0), made);
}

TEST_F(BrivoMixesScreenTest, AChosenMixPlaysUnlessItHasJustGone) {
    const auto mix = addMix("A", {"a"});
    auto& table = open();
    const auto playlist = mixes->_playlistAtIndexPath({0, 0});
    library->removePlaylist(*playlist);
    tap(*table.cellForRowAtIndexPath({0, 0}));
    EXPECT_EQ(stack->presentedViewController(), nullptr);
    EXPECT_TRUE(table.indexPathsForSelectedRows().empty());
    EXPECT_EQ(provider->asked, nullptr);

    addMix("A", {"a"});
    tap(*table.cellForRowAtIndexPath({0, 0}));
    advance(1);
    EXPECT_TRUE(
        std::dynamic_pointer_cast<ZRNNowPlayingNavigationController>(stack->presentedViewController()));
    const auto asked = std::dynamic_pointer_cast<MediaPlaylist>(provider->asked);
    ASSERT_TRUE(asked);
    EXPECT_NE(asked->persistentID(), mix);
    EXPECT_EQ(asked->name(), "A");
    EXPECT_EQ(provider->given, Dictionary());
}

class AndOthersLabelTest : public BrivoMixesScreenTest {
protected:
    AndOthersLabelTest() {
        // Letters are five points wide and lines twelve high: twenty letters in one line.
        label->setFont(Font::systemFont(10));
        label->setBackgroundColor(Color::blackColor());
        label->setSeparator(", ");
        label->setAndOthers("%@ and others");
        label->setItems({"Anna", "Ben", "Caroline"});
        const auto holder = make<ViewController>();
        show(holder);
        holder->view()->addSubview(label);
        settle();
    }
    Texts drawn() const {
        RecordingCanvas canvas;
        label->drawRect(canvas, label->bounds());
        return canvas.shownTexts();
    }
    bool isDirty() const { return !window->takeDamage().empty(); }

    const std::shared_ptr<ZRNAndOthersLabel> label = make<ZRNAndOthersLabel>(Rect(0, 0, 100, 12));
};

TEST_F(AndOthersLabelTest, NamesAsManyAsFit) {
    EXPECT_EQ(drawn(), Texts{"Anna, Ben and others"});
    EXPECT_EQ(label->actualHeight(), 12);
    EXPECT_EQ(label->desiredHeight(), 24);
    label->setBounds({0, 0, 100, 24});
    EXPECT_EQ(drawn(), Texts{"Anna, Ben, Caroline\nand others"});
    EXPECT_EQ(label->actualHeight(), label->desiredHeight());
    label->setBounds({0, 0, 50, 11});
    EXPECT_EQ(drawn(), Texts{"Anna"}) << "alone, for not even it fits within the wording";
    EXPECT_EQ(label->actualHeight(), 0);
    label->setItems({});
    EXPECT_EQ(drawn(), Texts());
}

TEST_F(AndOthersLabelTest, OnlyItemsAndBoundsMakeItFitAnew) {
    drawn();
    label->setSeparator(" + ");
    label->setAndOthers("%@ & co");
    label->setFont(Font::systemFont(20));
    label->setTextColor(Color::blackColor());
    EXPECT_FALSE(isDirty());
    EXPECT_EQ(label->actualHeight(), 48) << "measured in the new font, with the old words";
    label->setBounds(label->bounds());
    EXPECT_FALSE(isDirty()) << "nothing moved: the next drawing, whenever, fits it anew";
    label->setFrame({0, 0, 100, 24});
    EXPECT_EQ(drawn(), Texts{"Anna & co"});
    settle();
    label->setItems({"Dora", "Emil"});
    EXPECT_TRUE(isDirty());
    EXPECT_EQ(drawn(), Texts{"Dora & co"});
}

}  // namespace
}  // namespace zornic
