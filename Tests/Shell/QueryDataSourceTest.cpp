#include <thread>

#include "Data Sources/ZRNQueryDataSource.h"
#include "Platform/Media/AVQueueFeeder.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/MediaQueryZRNAdditions.h"

namespace zornic {
namespace {

using Ordering = std::vector<std::string>;
using namespace MediaItemProperty;

MediaPredicate filter(const char* property, Value value = 7) {
    return MediaPredicate::property(property, std::move(value));
}

std::shared_ptr<MediaQuery> queryOf(std::vector<MediaPredicate> filters,
                                    MediaGrouping grouping = MediaGrouping::Title) {
    const auto query = ZRN_queryWithFilterPredicates(std::move(filters));
    query->setGroupingType(grouping);
    return query;
}

class Listener final : public Object, public CompletionQueryDataSourceDelegate {
public:
    void dataSourceDidInvalidate(CompletionQueryDataSource&) override { ++invalidations; }
    int invalidations = 0;
};

class QueryDataSourceTest : public testing::Test, protected ScreenFixture {
protected:
    std::shared_ptr<ZRNQueryDataSource> sourceOf(const std::shared_ptr<MediaQuery>& query,
                                                 EntityType type = EntityType::Items) {
        const auto source = make<ZRNQueryDataSource>(query, type);
        source->setDelegate(weak<CompletionQueryDataSourceDelegate>(listener.get()));
        return source;
    }
    static std::shared_ptr<QueryPlaybackContext> contextOf(ZRNQueryDataSource& source, std::uint64_t index) {
        return std::dynamic_pointer_cast<QueryPlaybackContext>(source.playbackContextForIndex(index));
    }
    static void postFromAnotherThread(const std::shared_ptr<Object>& sender) {
        std::thread([&] {
            NotificationCenter::defaultCenter().post(ApplicationDefaultsDidChangeNotification, sender);
        }).join();
    }

    const std::shared_ptr<Listener> listener = make<Listener>();
};

TEST_F(QueryDataSourceTest, ListsAreOrderedByTheSettings) {
    struct Case {
        MediaGrouping grouping;
        const char* filtered;
        bool byArtist, byAlbumArtist;
        std::optional<Ordering> ordering;  // nullopt: left as it is
    };
    using Group = MediaGrouping;
    const char* const playlist = MediaPlaylistProperty::PersistentID;
    const Case cases[] = {
        {Group::Title, nullptr, false, false, Ordering()},
        {Group::Title, nullptr, true, true, Ordering{Artist, AlbumTitle, DiscNumber, AlbumTrackNumber}},
        {Group::Title, AlbumPersistentID, true, false,
         Ordering{Artist, AlbumTitle, DiscNumber, AlbumTrackNumber}},
        {Group::Title, playlist, true, true, std::nullopt},
        {Group::Album, nullptr, false, true, Ordering()},
        {Group::Album, nullptr, true, false, Ordering{Artist, AlbumTitle}},
        {Group::Album, nullptr, true, true, Ordering{AlbumArtist, AlbumTitle}},
        {Group::Album, GenrePersistentID, true, false, Ordering{Artist, AlbumTitle}},
        {Group::Album, AlbumPersistentID, true, false, std::nullopt},
        {Group::Album, AlbumArtistPersistentID, true, false, std::nullopt},
        {Group::Album, ArtistPersistentID, false, false, std::nullopt},
        {Group::Album, ComposerPersistentID, true, true, std::nullopt},
        {Group::Genre, nullptr, true, true, std::nullopt},
        {Group::Genre, GenrePersistentID, false, true,
         Ordering{Title, ArtistPersistentID, AlbumPersistentID}},
        {Group::Genre, GenrePersistentID, true, true, Ordering{Artist, AlbumTitle}},
        {Group::Artist, nullptr, true, true, std::nullopt},
        {Group::Playlist, nullptr, true, true, std::nullopt},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto& [grouping, filtered, byArtist, byAlbumArtist, ordering] = cases[i];
        defaults->sortByArtist = byArtist;
        defaults->groupByAlbumArtist = byAlbumArtist;
        const auto query = queryOf({}, grouping);
        if (filtered) query->addFilterPredicate(filter(filtered));
        const auto filters = query->filterPredicates();
        query->_setOrderingProperties({"as it was"});
        const auto source = sourceOf(query, EntityType::Collections);
        EXPECT_EQ(query->orderingProperties(), ordering.value_or(Ordering{"as it was"})) << "case " << i;
        EXPECT_EQ(source->_updateQueryPredicatesAndOrdering(), ordering.has_value()) << "case " << i;
        EXPECT_EQ(query->filterPredicates(), filters) << "case " << i;
    }
}

TEST_F(QueryDataSourceTest, AChangedSettingReloadsOnTheMainThreadOnlyWhatItConcerns) {
    library->addSong("A", "Zoe", "One");
    library->addSong("B", "Anna", "Two");
    const auto query = MediaQuery::songsQuery();
    auto songs = sourceOf(query);
    EXPECT_EQ(songs->entityAtIndex(0)->valueForProperty(MediaItemProperty::Title).asText(), "A");

    defaults->sortByArtist = true;
    postFromAnotherThread(make<FakeDefaults>());
    advance(0);
    EXPECT_EQ(listener->invalidations, 0) << "somebody else's settings";

    postFromAnotherThread(defaults);
    EXPECT_EQ(listener->invalidations, 0) << "not on the posting thread";
    EXPECT_TRUE(query->orderingProperties().empty());
    advance(0);
    EXPECT_EQ(listener->invalidations, 1);
    EXPECT_EQ(songs->entityAtIndex(0)->valueForProperty(MediaItemProperty::Title).asText(), "B");

    const auto ofArtist = queryOf({filter(ArtistPersistentID)}, MediaGrouping::Album);
    const auto albums = sourceOf(ofArtist, EntityType::Collections);
    ZRNSetSharedDefaults(make<FakeDefaults>());
    songs->setDelegate({});
    postFromAnotherThread(defaults);
    // Goes before its turn comes; what is on its way keeps it.
    const std::weak_ptr<ZRNQueryDataSource> gone = songs;
    songs = nullptr;
    EXPECT_FALSE(gone.expired());
    advance(0);
    EXPECT_TRUE(gone.expired());
    EXPECT_TRUE(query->orderingProperties().empty()) << "still told by the settings of its beginning";
    EXPECT_EQ(listener->invalidations, 1) << "the albums of an artist keep their order";
    postFromAnotherThread(defaults);
    advance(0);
}

TEST_F(QueryDataSourceTest, ASongPlaysItsListFromThere) {
    const auto query = addSongs({"A", "B", "C"});
    const auto source = sourceOf(query);
    const auto context = contextOf(*source, 2);
    EXPECT_EQ(context->query(), query);
    EXPECT_EQ(context->startIndex(), 2U);
    EXPECT_TRUE(context->keepPlayingCurrentItemIfPossible());
    EXPECT_EQ(context->shuffleType(), 0);
    EXPECT_EQ(contextOf(*source, 3)->startIndex(), NotFound);

    // The list on screen is of a moment ago, the query of now.
    library->removeItem(source->entityAtIndex(0)->persistentID());
    EXPECT_EQ(contextOf(*source, 0)->startIndex(), NotFound);
    EXPECT_EQ(contextOf(*source, 2)->startIndex(), 1U);
}

TEST_F(QueryDataSourceTest, ACollectionPlaysItsItems) {
    library->addSong("A", "Anna", "One", 1);
    library->addSong("B", "Anna", "Two", 1);
    const auto source = sourceOf(MediaQuery::albumsQuery(), EntityType::Collections);
    const auto context = contextOf(*source, 1);
    EXPECT_EQ(context->query()->_countOfItems(), 1U);
    EXPECT_EQ(
        context->query()->items()->entityAtIndex(0)->valueForProperty(MediaItemProperty::Title).asText(),
        "B");
    EXPECT_EQ(context->startIndex(), std::nullopt);
    EXPECT_FALSE(context->keepPlayingCurrentItemIfPossible());
    EXPECT_EQ(source->playbackContextForIndex(2), nullptr);
}

TEST_F(QueryDataSourceTest, TheHostMayFeedTheQueueItself) {
    class Feeders final : public QueueFeederClass {
    public:
        std::shared_ptr<AVQueueFeeder> makeFeeder(const QueryPlaybackContext& context,
                                                  std::uint64_t seed) const override {
            return make<MediaQueryQueueFeeder>(context.query(), 1, 0, seed);
        }
    };
    const auto context = make<ZRNQueryPlaybackContext>(addSongs({"A", "B"}));
    EXPECT_EQ(context->queueFeederClass(), nullptr);
    const auto feeders = std::make_shared<Feeders>();
    ClassRegistry::shared().registerClass("MusicQueryQueueFeeder", feeders);
    EXPECT_EQ(context->queueFeederClass(), feeders);
    player->reloadWithPlaybackContext(context);
    EXPECT_EQ(player->currentItem()->mainTitle(), "B");
    ClassRegistry::shared().removeClass("MusicQueryQueueFeeder");
}

TEST_F(QueryDataSourceTest, TheRowThatPlaysIsKnown) {
    const auto query = addSongs({"A", "B"}, {{IncludeInShuffle, true}});
    library->addSong("C", "Cleo", "Other");
    const auto source = sourceOf(MediaQuery::songsQuery());
    EXPECT_FALSE(source->entityIsNowPlayingAtIndex(0)) << "nothing plays";

    play(query, 1);
    EXPECT_TRUE(source->entityIsNowPlayingAtIndex(1));
    EXPECT_FALSE(source->entityIsNowPlayingAtIndex(0));
    EXPECT_TRUE(source->queryIsNowPlayingAtIndex(0));
    EXPECT_FALSE(source->entityIsNowPlayingAtIndex(5));

    const auto unrestricted = sourceOf(make<MediaQuery>());
    EXPECT_TRUE(unrestricted->entityIsNowPlayingAtIndex(1)) << "the queue is restricted to music";
    const auto album = sourceOf(queryOf({filter(AlbumTitle, "Album")}));
    EXPECT_FALSE(album->entityIsNowPlayingAtIndex(1)) << "the queue is another list";
    play(queryOf({filter(AlbumTitle, "Album"), filter(IncludeInShuffle, true)}), 0);
    EXPECT_TRUE(album->entityIsNowPlayingAtIndex(0));

    const auto albums = sourceOf(MediaQuery::albumsQuery(), EntityType::Collections);
    play(query, 0);
    EXPECT_FALSE(albums->entityIsNowPlayingAtIndex(0)) << "an album is no item";
    ZRNSetSharedAVPlayer(nullptr);
    EXPECT_FALSE(source->entityIsNowPlayingAtIndex(0));
}

TEST_F(QueryDataSourceTest, QueuesAreComparedByWhatTheyPlay) {
    const char* const playlist = MediaPlaylistProperty::PersistentID;
    using Filters = std::vector<MediaPredicate>;
    struct Case {
        const char* what;
        Filters left, right;
        bool equal;
    };
    const Filters shuffled = {filter(IncludeInShuffle, true), filter(IsStreamingQuality, true)};
    const auto with = [](Filters filters, const Filters& more) {
        filters.insert(filters.end(), more.begin(), more.end());
        return filters;
    };
    const Case cases[] = {
        {"none and none", {}, {}, true},
        {"in another order", {filter(Artist), filter(Composer)}, {filter(Composer), filter(Artist)}, true},
        {"but for shuffling", {filter(Composer)}, with({filter(Composer)}, shuffled), true},
        {"different, nothing shared", {filter(Composer, 1)}, {filter(Composer, 2)}, false},
        {"same album, one of an artist",
         {filter(AlbumPersistentID)},
         {filter(AlbumPersistentID), filter(Composer)},
         true},
        {"same album title", {filter(AlbumTitle, "A")}, {filter(AlbumTitle, "A"), filter(Composer)}, true},
        {"same artist", {filter(ArtistPersistentID), filter(Composer)}, {filter(ArtistPersistentID)}, true},
        {"same album artist",
         {filter(AlbumArtistPersistentID), filter(Composer)},
         {filter(AlbumArtistPersistentID)},
         true},
        {"one album of two", {filter(AlbumPersistentID, 1)}, {filter(AlbumPersistentID, 2)}, false},
        {"same playlist", {filter(playlist), filter(Composer)}, {filter(playlist)}, true},
        {"two playlists of an artist",
         {filter(playlist, 1), filter(ArtistPersistentID)},
         {filter(playlist, 2), filter(ArtistPersistentID)},
         false},
    };
    for (const auto& [what, left, right, equal] : cases) {
        EXPECT_EQ(ZRN_isEqualToNowPlayingQuery(queryOf(left), queryOf(right)), equal) << what;
        EXPECT_EQ(ZRN_isEqualToNowPlayingQuery(queryOf(right), queryOf(left)), equal)
            << what << ", other way round";
    }
    const auto plain = queryOf({filter(Composer)});
    EXPECT_EQ(_music_nowPlayingComparableQuery(plain), plain);
    EXPECT_FALSE(ZRN_isEqualToNowPlayingQuery(plain, nullptr));
    EXPECT_FALSE(ZRN_isEqualToNowPlayingQuery(plain, queryOf({filter(Composer)}, MediaGrouping::Album)));
}

TEST_F(QueryDataSourceTest, AFolderNamesItsQueryBeforeAPlaylist) {
    using namespace MediaPlaylistProperty;
    const auto list = library->addPlaylist("List", {}),
               folder = library->addPlaylist("Folder", {}, {{IsFolder, true}});
    const auto both =
        queryOf({filter(MediaPlaylistProperty::PersistentID, list), filter(ParentPersistentID, folder)});
    EXPECT_EQ(ZRN_playlistTitle(*both), "Folder");
    const auto top =
        queryOf({filter(MediaPlaylistProperty::PersistentID, list), filter(ParentPersistentID, 0)});
    EXPECT_EQ(ZRN_playlistTitle(*top), "List");
    EXPECT_EQ(ZRN_playlist(*queryOf({})), nullptr);
    for (const auto none : {zornic::PersistentID{0}, library->addPlaylist("", {}), zornic::PersistentID{99}})
        EXPECT_EQ(ZRN_playlistTitle(*queryOf({filter(ParentPersistentID, none)})), std::nullopt);
}

}  // namespace
}  // namespace zornic
