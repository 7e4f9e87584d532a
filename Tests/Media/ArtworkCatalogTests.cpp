#include <latch>

#include "Platform/Media/ArtworkCatalog.h"
#include "Platform/Media/ArtworkStore.h"
#include "Tests/Media/MediaFixture.h"

namespace zornic {
namespace {

class ArtworkCatalogTest : public MediaFixture {
protected:
    ArtworkCatalogTest() {
        for (const auto* token : {"a", "b", "c", "d", "e", "f"}) library->artwork.insert(token);
    }
    ~ArtworkCatalogTest() override {
        ArtworkCatalog::evictAll();
        ArtworkCatalog::setCacheLimit(32 << 20);
    }

    std::shared_ptr<ArtworkCatalog> catalog(const std::string& token, double side = 36) {
        const auto made = make<ArtworkCatalog>(library, token);
        made->setFittingSize({side, side});
        return made;
    }
    /** Binds and notes what arrives, under the token. */
    void bind(const std::shared_ptr<Object>& destination, const std::string& token, double side = 36) {
        catalog(token, side)->setDestination(destination, [this, token](const Image& image) {
            EXPECT_TRUE(RunLoop::isMainThread());
            arrived.push_back(image ? token : "no " + token);
        });
    }

    using Texts = std::vector<std::string>;
    Texts arrived;
    const std::shared_ptr<Object> cell = make<Object>();
};

TEST_F(ArtworkCatalogTest, APictureArrivesLaterAndFromThenOnAtOnce) {
    bind(cell, "a");
    EXPECT_EQ(arrived, Texts());
    settle();
    EXPECT_EQ(arrived, Texts{"a"});
    EXPECT_EQ(ArtworkCatalog::boundTo(cell)->token(), "a");
    bind(make<Object>(), "a");
    EXPECT_EQ(arrived, (Texts{"a", "a"}));
    EXPECT_TRUE(catalog("a")->imageAtHand());
    EXPECT_FALSE(catalog("a", 200)->imageAtHand());
    EXPECT_EQ(library->loadedArtwork().size(), 1U);

    bind(cell, "a", 200);
    settle();
    EXPECT_EQ(library->loadedArtwork().size(), 2U) << "another size is another picture";
    const auto sharp = catalog("a", 200);
    sharp->setDestinationScale(2);
    EXPECT_TRUE(sharp->imageAtHand()) << "any scale will do for what is at hand";
    ArtworkCatalog::evictAll();
    EXPECT_FALSE(catalog("a")->imageAtHand());
}

TEST_F(ArtworkCatalogTest, OnlyTheNewestBindingOfALivingDestinationIsServed) {
    auto gone = make<Object>();
    const auto unbound = make<Object>();
    bind(cell, "a");
    bind(gone, "a");
    bind(unbound, "a");
    bind(cell, "b");
    gone.reset();
    ArtworkCatalog::unbind(unbound);
    settle();
    EXPECT_EQ(arrived, Texts{"b"});

    // A completion may bind its destination to the next picture.
    catalog("c")->setDestination(cell, [&](const Image&) { bind(cell, "d"); });
    settle();
    EXPECT_EQ(arrived, (Texts{"b", "d"}));
    EXPECT_EQ(ArtworkCatalog::boundTo(cell)->token(), "d");
}

TEST_F(ArtworkCatalogTest, RowsThatAreScrolledAwayAreNeverDecoded) {
    std::latch release(1);
    library->onLoadArtwork = [&](const auto&) { release.wait(); };
    std::vector<std::shared_ptr<Object>> busy;
    for (const auto* token : {"a", "b", "c"}) bind(busy.emplace_back(make<Object>()), token);
    for (int row = 0; row < 50; ++row) bind(cell, "row " + std::to_string(row));
    bind(cell, "d");
    const auto twin = make<Object>();
    bind(twin, "d");
    release.count_down();
    settle();
    auto loaded = library->loadedArtwork();
    std::ranges::sort(loaded);
    EXPECT_EQ(loaded, (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(std::ranges::count(arrived, "d"), 2) << "those who want the same picture share one load";
}

TEST_F(ArtworkCatalogTest, ThatThereIsNoPictureIsRememberedUntilTheLibraryChanges) {
    bind(cell, "missing");
    settle();
    bind(cell, "missing");
    EXPECT_EQ(arrived, (Texts{"no missing", "no missing"}));
    bind(cell, "");
    EXPECT_EQ(arrived.back(), "no ");
    EXPECT_EQ(library->loadedArtwork().size(), 1U);

    library->artwork.insert("missing");
    library->addSong("New", "Artist", "Album");
    bind(cell, "missing");
    settle();
    EXPECT_EQ(arrived.back(), "missing");
}

TEST_F(ArtworkCatalogTest, PicturesGoWithWhoAskedForThemAndBeyondTheLimit) {
    auto context = make<Object>();
    std::weak_ptr<const ImageSource> kept;
    const auto asked = catalog("a");
    asked->setCacheIdentifier("list", context);
    asked->requestImage([&](const Image& image) { kept = image.source(); });
    settle();
    EXPECT_FALSE(kept.expired());
    context.reset();
    bind(cell, "b");
    settle();
    EXPECT_TRUE(kept.expired());

    catalog("c")->requestImage([&](const Image& image) { kept = image.source(); });
    settle();
    constexpr double side = 1500;  // nine megabytes each
    ArtworkCatalog::setCacheLimit(24 << 20);
    bind(cell, "d", side);
    settle();
    bind(cell, "e", side);
    settle();
    EXPECT_FALSE(kept.expired());
    bind(cell, "f", side);
    settle();
    EXPECT_TRUE(kept.expired());
    EXPECT_TRUE(catalog("f", side)->imageAtHand());
    ArtworkCatalog::setCacheLimit(8 << 20);
    EXPECT_FALSE(catalog("f", side)->imageAtHand());
}

TEST_F(ArtworkCatalogTest, LoadsThatGetLostWithAMainLoopDoNotHoldUpOthers) {
    std::latch release(1);
    library->onLoadArtwork = [&](const auto&) { release.wait(); };
    std::vector<std::shared_ptr<Object>> cells;
    for (const auto* token : {"a", "b", "c"}) bind(cells.emplace_back(make<Object>()), token);
    release.count_down();
    BackgroundWork::waitUntilIdle(std::chrono::seconds(10));
    loop.reset();
    loop.emplace(clock);
    bind(cell, "a");
    settle();
    EXPECT_EQ(arrived, (Texts{"a", "a"}));
}

TEST_F(ArtworkCatalogTest, CataloguesOfOneTokenShowTheSamePicture) {
    EXPECT_TRUE(catalog("a", 10)->isVisuallyIdenticalTo(*catalog("a", 20)));
    EXPECT_FALSE(catalog("a")->isVisuallyIdenticalTo(*catalog("b")));
    EXPECT_FALSE(catalog("a")->isVisuallyIdenticalTo(*make<ArtworkCatalog>(make<FakeMediaLibrary>(), "a")));
    const auto id = library->addSong("Song", "Artist", "Album", 1, {{MediaItemProperty::ArtworkToken, "a"}});
    EXPECT_TRUE(
        library->itemWithPersistentID(id, false)->artworkCatalog()->isVisuallyIdenticalTo(*catalog("a")));
    library->setValue(id, MediaItemProperty::ArtworkToken, "");
    EXPECT_EQ(library->itemWithPersistentID(id, false)->artworkCatalog(), nullptr);
}

}  // namespace
}  // namespace zornic
