#include <filesystem>
#include <fstream>

#include "Cell Configurations/ZRNComposerCellConfiguration.h"
#include "Tests/Shell/LibraryScreens.h"
#include "Utilities/ZRNGenreImage.h"
#include "Utilities/ZRNHelmoScreen.h"

namespace zornic {
namespace {

class CellConfigurationTest : public testing::Test, protected LibraryScreens {
protected:
    /** A host with pictures of these genres. */
    static void setGenreImages(const std::vector<std::string>& keys) {
        const auto folder = std::filesystem::path(testing::TempDir()) / "zornic-genre-images";
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder / "Images");
        for (const auto& key : keys)
            std::ofstream(folder / "Images" / ("genre-image-" + key + ".svg"))
                << "<svg width=\"36\" height=\"36\"/>";
        Bundle::registerBundle(make<Bundle>(ZRNHostMusicBundleIdentifier, folder));
    }
    static std::string imageOf(const std::string& genre) { return ZRNGenreImageForGenreName(genre).name(); }
};

TEST_F(CellConfigurationTest, ArtistsAreNamedByTheSettingAndComposersAreNot) {
    using namespace MediaCollectionProperty;
    const auto& artists = ZRNArtistCellConfiguration::instance();
    const auto& composers = ZRNComposerCellConfiguration::instance();
    const auto fetches = [](const auto& configuration, const char* property) {
        return std::ranges::count(configuration.collectionPropertiesToFetch(), property) == 1;
    };
    EXPECT_EQ(artists.titleProperty(), ArtistName);
    EXPECT_EQ(composers.titleProperty(), ComposerName);
    defaults->groupByAlbumArtist = true;
    EXPECT_EQ(artists.titleProperty(), ArtistName) << "kept until it is told";
    groupByAlbumArtist(true);
    EXPECT_EQ(artists.titleProperty(), AlbumArtistName);
    EXPECT_EQ(artists.itemPersistentIDProperty(), MediaItemProperty::AlbumArtistPersistentID);
    EXPECT_TRUE(fetches(artists, AlbumArtistName) && !fetches(artists, ArtistName));
    EXPECT_EQ(composers.titleProperty(), ComposerName);
    EXPECT_TRUE(fetches(composers, ComposerName) && !fetches(composers, AlbumArtistName));

    // Another host's settings are others, though nobody told.
    const auto others = make<FakeDefaults>();
    ZRNSetSharedDefaults(others);
    EXPECT_EQ(artists.persistentIDProperty(), ArtistPersistentID);
}

TEST_F(CellConfigurationTest, AnArtistWithoutANameHasAnEmptyRow) {
    using namespace MediaItemProperty;
    library->artwork.insert("cover");
    library->addItem(
        {{Title, "A"}, {ArtistPersistentID, 11}, {AlbumArtist, "Band"}, {ArtworkToken, "cover"}});
    const auto nameless = library->addItem({{Title, "B"}, {ArtistPersistentID, 12}, {AlbumArtist, ""}});
    openTab(ZRNArtistsViewControllerIdentifier);
    EXPECT_EQ(rows(), (Rows{"Band", ""}));
    const Image placeholder = ZRNAlbumPlaceholderImageWithStyle(0);
    auto& row = cellOf(0, 0);
    EXPECT_TRUE(row.artworkImage());
    EXPECT_NE(row.artworkImage(), placeholder);
    EXPECT_EQ(cellOf(0, 1).artworkImage(), placeholder);

    // A row whose representative is not named has one, of whom it shows the name but no picture.
    library->setValue(nameless, ArtworkToken, "cover");
    library->setValue(nameless, AlbumArtist, "Late");
    MediaQueryDescription items;
    items.predicates = {MediaPredicate::property(ArtistPersistentID, 12)};
    const auto cell = strong<TableViewCell>(&row);
    list().cellConfiguration().configureCellWithViewControllerEntityAtIndexAnimated(
        cell, list(), make<MediaItemCollection>(library, 12, Dictionary(), items), 0, false);
    EXPECT_EQ(row.textLabel()->text(), "Late");
    EXPECT_EQ(row.artworkImage(), placeholder);
}

TEST_F(CellConfigurationTest, AGenreShowsThePictureOfItsMostSpecificKind) {
    setGenreImages({"hip-hop", "electronic", "randb", "modern-rock", "classic-rock", "alternative"});
    const std::vector<std::pair<const char*, const char*>> cases = {{"Hip Hop", "hip-hop"},
                                                                    {"Deep House", "electronic"},
                                                                    {"R&B/Soul", "randb"},
                                                                    {"Soft rock", "modern-rock"},
                                                                    {"R and B", ""},
                                                                    {"Classic Rock Ballads", "classic-rock"},
                                                                    {"Alternative Rock", "alternative"},
                                                                    {"Polka", ""},
                                                                    {"Smooth Jazz", ""},
                                                                    {"", ""}};
    for (int again = 0; again < 2; ++again)
        for (const auto& [genre, key] : cases)
            EXPECT_EQ(imageOf(genre), *key ? "genre-image-" + std::string(key) : "") << genre;

    library->artwork.insert("cover");
    for (const char* genre : {"Hip Hop", "Polka"})
        addSongs({genre}, {{MediaItemProperty::Genre, genre}, {MediaItemProperty::ArtworkToken, "cover"}});
    library->addItem({{MediaItemProperty::Title, "A"}, {MediaItemProperty::GenrePersistentID, 7}});
    openTab(ZRNGenresViewControllerIdentifier);
    EXPECT_EQ(rows(), (Rows{"Hip Hop", "Polka", "Unknown genre"}));
    EXPECT_EQ(cellOf(0, 0).artworkImage().name(), "genre-image-hip-hop");
    EXPECT_TRUE(cellOf(1, 0).artworkImage().name().empty()) << "a cover";
    EXPECT_EQ(cellOf(2, 0).artworkImage(), ZRNAlbumPlaceholderImageWithStyle(0));
}

TEST_F(CellConfigurationTest, AnAlbumSaysWhoseItIs) {
    library->addSong("A", "Anna", "Ash");
    library->addItem({{MediaItemProperty::Title, "B"}, {MediaItemProperty::AlbumPersistentID, 7}});
    openTab(ZRNAlbumsViewControllerIdentifier);
    EXPECT_EQ(rows(), (Rows{"Ash", "Unknown album"}));
    EXPECT_EQ(cell(0, 0)->detailTextLabel()->text(), "Anna");
    EXPECT_EQ(cell(1, 0)->detailTextLabel()->text(), "Unknown artist");
    EXPECT_EQ(cellOf(1, 0).artworkImage(), ZRNAlbumPlaceholderImageWithStyle(1));
}

}  // namespace
}  // namespace zornic
