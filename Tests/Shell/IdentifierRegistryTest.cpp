#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ViewControllerZornicAdditions.h"

namespace zornic {
namespace {

using Ordering = std::vector<std::string>;

class IdentifierRegistryTest : public testing::Test, protected ScreenFixture {
protected:
    static std::vector<std::int64_t> mediaTypes(const MediaQuery& query) {
        std::vector<std::int64_t> types;
        for (const auto& predicate : query.filterPredicates())
            if (predicate.property() == MediaItemProperty::MediaType)
                types.push_back(predicate.value().asInteger());
        return types;
    }
    static MediaPredicate mediaType(std::int64_t type) {
        return MediaPredicate::property(MediaItemProperty::MediaType, type);
    }
};

TEST_F(IdentifierRegistryTest, HostNamesLeadToScreens) {
    EXPECT_EQ(ZRN_helmoIdentifierForIdentifier("songs"), ZRNSongsViewControllerIdentifier);
    EXPECT_EQ(ZRN_helmoIdentifierForIdentifier("playlistsongs"), ZRNSongsViewControllerIdentifier);
    EXPECT_EQ(ZRN_helmoIdentifierForIdentifier("playlistfolder"), ZRNPlaylistsViewControllerIdentifier);
    EXPECT_EQ(ZRN_helmoIdentifierForIdentifier("compilations"), "ZRNCompilationsViewControllerIdentifier ");
    for (const char* unknown : {"podcasts", "podcastdetail", "sonvaleu", "shared", "", "Songs"})
        EXPECT_FALSE(ZRN_helmoIdentifierForIdentifier(unknown)) << unknown;
}

TEST_F(IdentifierRegistryTest, QueriesFollowTheSettingsOfTheMoment) {
    using namespace MediaItemProperty;
    const auto ordering = [](const char* name) { return ZRN_queryForIdentifier(name)->orderingProperties(); };
    defaults->groupByAlbumArtist = true;
    EXPECT_EQ(ordering("songs"), Ordering());
    EXPECT_EQ(ordering("albums"), Ordering()) << "grouping alone orders nothing";
    EXPECT_EQ(ZRN_queryForIdentifier("artists")->groupingType(), MediaGrouping::AlbumArtist);

    defaults->sortByArtist = true;
    EXPECT_EQ(ordering("songs"), Ordering({Artist, AlbumTitle}));
    EXPECT_EQ(ordering("albums"), Ordering({AlbumArtist, AlbumTitle}));
    defaults->groupByAlbumArtist = false;
    EXPECT_EQ(ordering("albums"), Ordering({Artist, AlbumTitle}));
    EXPECT_EQ(ZRN_queryForIdentifier("artists")->groupingType(), MediaGrouping::Artist);

    ZRNSetSharedDefaults(nullptr);
    EXPECT_EQ(ordering("songs"), Ordering());
    for (const char* without : {"albumsdetail", "audiobooks", "playlists", "radio", "compilations", "", "?"})
        EXPECT_EQ(ZRN_queryForIdentifier(without), nullptr) << without;
}

TEST_F(IdentifierRegistryTest, MusicAloneFindsVideosToo) {
    using Types = std::vector<std::int64_t>;
    EXPECT_EQ(mediaTypes(*ZRN_queryForIdentifier("songs")), Types{0x801});
    EXPECT_EQ(mediaTypes(*ZRN_queryForIdentifier("composers")), Types{0x801});
    EXPECT_EQ(mediaTypes(*MediaQuery::composersQuery()), Types()) << "of whatever it is";
    const auto lectures = ZRN_queryForIdentifier("sonvaleu");
    EXPECT_EQ(mediaTypes(*lectures), Types{8});
    EXPECT_TRUE(lectures->predicateForProperty(MediaItemProperty::IsSonvaleU)->value().asBool());
    EXPECT_EQ(lectures->groupingType(), MediaGrouping::Album);
    EXPECT_EQ(ZRN_queryForIdentifier("audiobooksdetail")->groupingType(), MediaGrouping::Album);

    const std::vector<std::pair<Types, Types>> cases = {{{}, {}},      {{1, 3}, {0x801}}, {{2}, {2}},
                                                        {{1, 2}, {0}}, {{3}, {3}},        {{-1}, {-1}}};
    for (const auto& [given, kept] : cases) {
        const auto query = make<MediaQuery>();
        query->addFilterPredicate(MediaPredicate::property(MediaItemProperty::Artist, "Anna"));
        for (const auto type : given) query->addFilterPredicate(mediaType(type));
        // Not the media type of the item: one of several conditions.
        query->addFilterPredicate(MediaPredicate::anyOf({mediaType(4), mediaType(8)}));
        const auto before = query->description();
        const auto sanitized = ZRN_sanitizedQueryForQuery(*query);
        EXPECT_NE(sanitized, query);
        EXPECT_EQ(mediaTypes(*sanitized), kept);
        EXPECT_EQ(sanitized->filterPredicates().size(), 2 + kept.size());
        EXPECT_EQ(query->description(), before) << "the given query stays as it is";
    }
}

TEST_F(IdentifierRegistryTest, AScreensOwnQueryFetchesWhatItsRowsShow) {
    ZRN_registerViewControllerIdentifiers();
    const auto listFor = [](const char* identifier) {
        return ScreenRegistry::shared().viewControllerForIdentifier(identifier);
    };
    for (const char* identifier : {ZRNArtistsViewControllerIdentifier, ZRNGenresViewControllerIdentifier,
                                   ZRNComposersViewControllerIdentifier, ZRNAlbumsViewControllerIdentifier}) {
        const auto list = listFor(identifier);
        const auto query = list->queryDataSource()->query();
        EXPECT_FALSE(query->collectionPropertiesToFetch().empty()) << identifier;
        EXPECT_EQ(query->collectionPropertiesToFetch(),
                  list->cellConfiguration().collectionPropertiesToFetch());
        EXPECT_EQ(mediaTypes(*query), std::vector<std::int64_t>{0x801}) << identifier;
        EXPECT_NE(listFor(identifier)->queryDataSource()->query(), query) << "a new one for each screen";
    }
    const auto playlists = listFor(ZRNPlaylistsViewControllerIdentifier)->queryDataSource()->query();
    EXPECT_TRUE(mediaTypes(*playlists).empty()) << "a list may hold anything";
}

}  // namespace
}  // namespace zornic
