#include <set>

#include "Host/Library/Mixes/MixOrder.h"
#include "Host/Library/Mixes/Mixes.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/ArtworkCatalog.h"
#include "Tests/Host/LibraryFixture.h"

namespace helmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using zornic::MediaGrouping;
using zornic::MediaPredicate;
namespace Playlist = zornic::MediaPlaylistProperty;
using Texts = std::vector<std::string>;
using Mixtures = std::vector<std::shared_ptr<zornic::MediaPlaylist>>;

class MixesTest : public LibraryFixture {
protected:
    MixesTest() { _mixes = std::make_unique<Mixes>(_library, true); }
    ~MixesTest() override { _mixes = nullptr; }

    /** Songs of an album, their covers all the same. */
    static std::vector<TrackTags> album(const std::string& artist, const std::string& genre, int year,
                                        int count) {
        std::vector<TrackTags> tracks;
        for (int number = 1; number <= count; ++number) {
            const std::string album = artist + " in " + std::to_string(year);
            tracks.push_back(tags(album + " " + std::to_string(number), artist, album, number));
            tracks.back().genre = genre;
            tracks.back().year = year;
            tracks.back().picture = static_cast<std::int64_t>(std::hash<std::string>()(album) >> 1);
        }
        return tracks;
    }
    static TrackTags onCompilation(const std::string& artist) {
        auto track = tags(artist + " live", artist, "One Evening", 1);
        track.isCompilation = true;
        return track;
    }
    /** Eleven songs of folk from the nineties, eleven later ones, and twelve of jazz. */
    void addFolkAndJazz() {
        add(album("Ada", "Folk", 1994, 6));
        add(album("Bea", "Folk", 1997, 5));
        add(album("Ada", "Folk", 2011, 5));
        add(album("Cay", "Folk", 2012, 6));
        add(album("Dom", "Jazz", 0, 6));
        add(album("Eve", "Jazz", 0, 6));
    }
    void update() {
        _mixes->update();
        zornic::BackgroundWork::waitUntilIdle(std::chrono::seconds(20));
    }
    Mixtures mixes() const {
        Mixtures result;
        const auto list =
            query(MediaGrouping::Playlist, {MediaPredicate::property(Playlist::IsBrivoMix, true)});
        for (std::uint64_t at = 0; at < list->_countOfCollections(); ++at)
            result.push_back(
                std::dynamic_pointer_cast<zornic::MediaPlaylist>(list->collections()->entityAtIndex(at)));
        return result;
    }
    Texts names() const {
        Texts result;
        for (const auto& mix : mixes()) result.push_back(mix->name());
        return result;
    }
    std::shared_ptr<zornic::MediaPlaylist> mix(const std::string& name) const {
        for (const auto& mix : mixes())
            if (mix->name() == name) return mix;
        ADD_FAILURE() << "there is no mix " << name;
        return nullptr;
    }
    static Texts songsOf(const zornic::MediaPlaylist& mix, const char* property) {
        return texts(*mix.items(), property);
    }

    std::unique_ptr<Mixes> _mixes;
};

TEST_F(MixesTest, ALibraryIsMixedByGenreDecadeAndSharedCompilations) {
    addFolkAndJazz();
    add(album("Fay", "Polka", 0, 30));
    add({onCompilation("Fay"), onCompilation("Dom"), onCompilation("Eve")});
    auto spoken = album("Reader", "Jazz", 0, 40);
    for (auto& part : spoken) part.mediaType = zornic::MediaType::Audiobook;
    add(spoken);
    add(album("", "Jazz", 0, 40));
    update();

    EXPECT_THAT(names(),
                ElementsAre("Fay and others", "Folk", "Folk of the 1990s", "Folk of the 2010s", "Jazz"));
    EXPECT_THAT(mix("Folk")->representativeArtists(), ElementsAre("Ada", "Cay", "Bea"));
    EXPECT_THAT(mix("Jazz")->representativeArtists(), testing::UnorderedElementsAre("Dom", "Eve"));
    EXPECT_EQ(mix("Fay and others")->representativeArtists().front(), "Fay");
    EXPECT_EQ(mix("Folk")->artworkCatalogs(4).size(), 4u);
    EXPECT_EQ(mix("Folk of the 1990s")->artworkCatalogs(4).size(), 2u);
    EXPECT_FALSE(mix("Folk")->isDeletable());
    for (const auto& mix : mixes()) {
        const auto songs = songsOf(*mix, zornic::MediaItemProperty::Title);
        EXPECT_GE(songs.size(), fewestMixSongs) << mix->name();
        EXPECT_EQ(std::set(songs.begin(), songs.end()).size(), songs.size()) << mix->name();
        const auto artists = songsOf(*mix, zornic::MediaItemProperty::Artist);
        EXPECT_EQ(std::ranges::adjacent_find(artists), artists.end()) << mix->name();
        EXPECT_THAT(artists, Not(testing::Contains("Reader")));
    }
    EXPECT_EQ(query(MediaGrouping::Playlist, {MediaPredicate::property(Playlist::IsBrivoMix, false)})
                  ->_countOfCollections(),
              0u);
}

TEST_F(MixesTest, MixesStayAsTheyAreUntilTheLibraryHasChangedMuch) {
    addFolkAndJazz();
    update();
    const auto folk = mix("Folk"), jazz = mix("Jazz");
    ASSERT_TRUE(folk && jazz);
    const auto before = songsOf(*folk, zornic::MediaItemProperty::Title);
    add(album("Gus", "Folk", 2012, 3));
    const auto generation = _library->generation();
    update();
    _mixes = nullptr;
    _mixes = std::make_unique<Mixes>(_library, true);
    update();
    EXPECT_EQ(_library->generation(), generation) << "nobody is told of nothing";
    EXPECT_EQ(songsOf(*mix("Folk"), zornic::MediaItemProperty::Title), before);

    add(album("Gus", "Folk", 2013, 2));
    update();
    EXPECT_EQ(mix("Folk")->persistentID(), folk->persistentID());
    const auto after = songsOf(*mix("Folk"), zornic::MediaItemProperty::Artist);
    EXPECT_EQ(std::ranges::count(after, "Gus"), 5);

    // A medium is taken away, and plugged in again.
    const auto setPresent = [this](bool isPresent) {
        _library->write([&](TrackStore& store) {
            const auto folder = store.folderId("/nowhere");
            for (std::int64_t track = 23; track <= 34; ++track) store.markPresent(track, folder, isPresent);
        });
        _library->noteChange();
        update();
    };
    setPresent(false);
    EXPECT_THAT(names(), Not(testing::Contains("Jazz")));
    setPresent(true);
    EXPECT_EQ(mix("Jazz")->persistentID(), jazz->persistentID());

    MixTexts german;
    german.genreOfDecade = "%@ der %@er";
    _mixes = std::make_unique<Mixes>(_library, true, german);
    update();
    EXPECT_THAT(names(), testing::Contains("Folk der 1990er"));
}

TEST_F(MixesTest, SwitchedOffTheyAreHiddenAndNotForgotten) {
    _mixes->setEnabled(false);
    addFolkAndJazz();
    update();
    EXPECT_FALSE(_library->isBrivoEnabled());
    EXPECT_THAT(mixes(), IsEmpty());
    const auto setEnabled = [this](bool isEnabled) {
        _mixes->setEnabled(isEnabled);
        zornic::BackgroundWork::waitUntilIdle(std::chrono::seconds(20));
    };
    setEnabled(true);
    EXPECT_TRUE(_library->isBrivoEnabled());
    const auto before = names();
    const auto folk = mix("Folk");
    ASSERT_TRUE(folk);
    setEnabled(false);
    EXPECT_THAT(mixes(), IsEmpty());
    EXPECT_EQ(_library->activeBrivoPlaylist(), nullptr);
    setEnabled(true);
    EXPECT_EQ(names(), before);
    EXPECT_EQ(mix("Folk")->persistentID(), folk->persistentID());
}

TEST_F(MixesTest, OfALibraryTooLargeToBeReadSomeIsReadFromEverywhere) {
    addFolkAndJazz();
    Database(databaseFile(), Database::Access::ReadWrite).execute("UPDATE track SET id = id * 3000");
    update();
    EXPECT_THAT(names(), IsSupersetOf({"Folk", "Folk of the 2010s", "Jazz"}));
    EXPECT_EQ(songsOf(*mix("Jazz"), zornic::MediaItemProperty::Title).size(), 12u);
}

TEST_F(MixesTest, AMakingThatIsCutShortBeginsAgain) {
    addFolkAndJazz();
    _mixes->update();
    _mixes = nullptr;
    _mixes = std::make_unique<Mixes>(_library, true);
    update();
    EXPECT_THAT(names(), IsSupersetOf({"Folk", "Jazz"}));
}

TEST(MixOrderTest, ArtistsFollowThemselvesOnlyWhereItCantBeAvoided) {
    for (std::int64_t first = 1; first <= 9; ++first)
        for (std::int64_t second = 0; second <= 6; ++second)
            for (std::int64_t third = 0; third <= 3; ++third) {
                std::vector<MixSong> songs;
                for (const auto& [artist, count] :
                     {std::pair(1, first), std::pair(2, second), std::pair(3, third)})
                    for (std::int64_t song = 0; song < count; ++song)
                        songs.push_back({.id = artist * 100 + song, .artist = artist});
                const auto ordered = MixOrder::spread(songs);
                ASSERT_TRUE(std::ranges::is_permutation(ordered, songs, {}, &MixSong::id, &MixSong::id));
                std::int64_t repeats = 0;
                for (std::size_t at = 1; at < ordered.size(); ++at)
                    repeats += ordered[at].artist == ordered[at - 1].artist;
                const auto total = static_cast<std::int64_t>(songs.size());
                EXPECT_EQ(repeats,
                          std::max<std::int64_t>(2 * std::max({first, second, third}) - total - 1, 0))
                    << first << ' ' << second << ' ' << third;
            }
}

TEST(MixOrderTest, ALargeGroupGivesAMixOfManyInTheSameOrderForTheSameSeed) {
    std::vector<MixSong> songs;
    for (std::int64_t id = 0; id < 5000; ++id) songs.push_back({.id = id, .artist = id < 3000 ? 1 : id % 40});
    const auto order = [&](std::uint64_t seed) {
        std::vector<std::int64_t> ids;
        for (const MixSong& song : MixOrder::mixed(songs, seed)) ids.push_back(song.id);
        return ids;
    };
    const auto mixed = order(7);
    EXPECT_EQ(mixed.size(), mostMixSongs);
    EXPECT_LE(std::ranges::count_if(mixed, [](auto id) { return id < 3000; }), 20) << "one of many artists";
    EXPECT_EQ(order(7), mixed);
    EXPECT_NE(order(8), mixed);
    EXPECT_FALSE(std::ranges::is_sorted(mixed));
}

}  // namespace
}  // namespace helmo
