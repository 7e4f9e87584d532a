#include <algorithm>
#include <random>

#include "Tests/Host/LibraryFixture.h"

namespace helmo {
namespace {

using zornic::MediaComparison;
using zornic::MediaGrouping;
using zornic::MediaPredicate;
namespace Item = zornic::MediaItemProperty;
namespace Collection = zornic::MediaCollectionProperty;
namespace Playlist = zornic::MediaPlaylistProperty;
using Texts = std::vector<std::string>;

class LibraryQuery : public LibraryFixture {
protected:
    static TrackTags track(const std::string& title, const std::string& artist, const std::string& album,
                           int disc, int number, const std::string& genre, int year) {
        TrackTags track = tags(title, artist, album, number);
        track.discNumber = disc;
        track.genre = genre;
        track.year = year;
        track.duration = number * 10;
        return track;
    }
    void addTwoArtists() {
        auto guest = track("Guest Song", "Cher", "Sun", 1, 3, "Jazz", 2001);
        guest.albumArtist = "Ann";
        auto episode = track("Episode", "Ann", "Daily", 0, 1, "Podcast", 2020);
        episode.mediaType = zornic::MediaType::Podcast;
        auto video = track("Clip", "Bob", "Hits", 1, 2, "Rock", 1990);
        video.mediaType = zornic::MediaType::MusicVideo;
        auto composed = track("Zoo", "Bob", "Hits", 1, 1, "Rock", 1990);
        composed.composer = "Bach";
        auto compiled = track("Compiled", "Dora", "Mix", 1, 1, "Rock", 2010);
        compiled.isCompilation = true;
        add({track("Sun B", "Ann", "Sun", 1, 2, "Jazz", 2001),
             track("Sun D", "Ann", "Sun", 2, 1, "Jazz", 2001),
             track("Sun A", "Ann", "Sun", 1, 1, "Rock", 2001),
             track("Old", "Ann", "Moon", 1, 1, "Jazz", 1999),
             track("Undated", "Ann", "Attic", 1, 1, "Jazz", 0), guest, episode, video, composed, compiled});
    }
    MediaPredicate is(const char* property, zornic::Value value) const {
        return MediaPredicate::property(property, std::move(value));
    }
    zornic::Value valueOf(const std::string& title, const char* property) const {
        return query({}, {is(Item::Title, title)})->items()->entityAtIndex(0)->valueForProperty(property);
    }
    Texts names(const zornic::MediaQuery& query, const char* property) const {
        return texts(*query.collections(), property);
    }
};

TEST_F(LibraryQuery, FiltersByEveryKindOfProperty) {
    addTwoArtists();
    EXPECT_EQ(query()->_countOfItems(), 10u);
    EXPECT_EQ(titles(*query({}, {is(Item::MediaType, 1 | 0x800), is(Item::Artist, "Bob")})),
              (Texts{"Clip", "Zoo"}));
    EXPECT_EQ(titles(*query({}, {is(Item::MediaType, 2)})), Texts{"Episode"});
    EXPECT_EQ(query({}, {is(Item::MediaType, 1), is(Item::MediaType, 2)})->_countOfItems(), 0u);
    EXPECT_EQ(
        titles(*query({}, {is(Item::ArtistPersistentID, valueOf("Guest Song", Item::ArtistPersistentID))})),
        Texts{"Guest Song"});
    EXPECT_EQ(titles(*query({}, {is(Item::Composer, "Bach")})), Texts{"Zoo"});
    EXPECT_EQ(titles(*query({}, {is(Item::IsCompilation, true)})), Texts{"Compiled"});
    EXPECT_EQ(
        titles(*query({}, {MediaPredicate::property(Item::AlbumTitle, "OO", MediaComparison::Contains)})),
        Texts{"Old"});
    EXPECT_EQ(titles(*query({}, {MediaPredicate::anyOf({is(Item::Year, 1999), is(Item::Title, "Zoo")})})),
              (Texts{"Old", "Zoo"}));
    // What names nothing is met by nothing, rather than by everything.
    EXPECT_EQ(query({}, {is(Item::AlbumPersistentID, {})})->_countOfItems(), 0u);
    EXPECT_EQ(query({}, {is("noSuchProperty", 1)})->_countOfItems(), 0u);
    EXPECT_EQ(query({}, {is(Item::Title, "x' OR 1 --")})->_countOfItems(), 0u);
}

TEST_F(LibraryQuery, GroupsItemsIntoCollections) {
    addTwoArtists();
    const MediaPredicate music = is(Item::MediaType, 1 | 0x800);
    EXPECT_EQ(names(*query(MediaGrouping::Album, {music}), Collection::AlbumTitle),
              (Texts{"Attic", "Hits", "Mix", "Moon", "Sun"}));
    EXPECT_EQ(names(*query(MediaGrouping::Artist, {music}), Collection::ArtistName),
              (Texts{"Ann", "Bob", "Cher", "Dora"}));
    // A compilation is nobody's album: its nameless album artist comes last.
    EXPECT_EQ(names(*query(MediaGrouping::AlbumArtist, {music}), Collection::AlbumArtistName),
              (Texts{"Ann", "Bob", ""}));
    EXPECT_EQ(names(*query(MediaGrouping::Composer), Collection::ComposerName), Texts{"Bach"});
    EXPECT_EQ(names(*query(MediaGrouping::PodcastTitle), Collection::AlbumTitle), Texts{"Daily"});
    EXPECT_EQ(query()->collections()->count(), 10u);
    EXPECT_EQ(query()->collections()->entityAtIndex(0)->representativeItem()->title(), "Clip");

    const auto genres = query(MediaGrouping::Genre, {music});
    EXPECT_EQ(names(*genres, Collection::GenreName), (Texts{"Jazz", "Rock"}));
    const auto jazz =
        std::dynamic_pointer_cast<zornic::MediaItemCollection>(genres->collections()->entityAtIndex(0));
    EXPECT_EQ(jazz->count(), 5u);
    EXPECT_EQ(jazz->items()->count(), 5u);
    EXPECT_EQ(jazz->valueForProperty(Collection::ArtistCount).asInteger(), 2);
    EXPECT_EQ(jazz->valueForProperty(Collection::AlbumCount).asInteger(), 3);
    EXPECT_EQ(jazz->representativeItem()->genre(), "Jazz");
    EXPECT_EQ(genres->collections()->indexOfEntity(*jazz), 0u);

    // Within a filter a collection is only what meets it.
    const auto rockArtists = query(MediaGrouping::Artist, {is(Item::Genre, "Rock")});
    EXPECT_EQ(names(*rockArtists, Collection::ArtistName), (Texts{"Ann", "Bob", "Dora"}));
    const auto ann =
        std::dynamic_pointer_cast<zornic::MediaItemCollection>(rockArtists->collections()->entityAtIndex(0));
    EXPECT_EQ(ann->count(), 1u);
    EXPECT_EQ(titles(*ann->itemsQuery()), Texts{"Sun A"});
    EXPECT_EQ(ann->representativeItem()->title(), "Sun A");
}

TEST_F(LibraryQuery, AlbumsPlayInDiscAndTrackOrderAndAnArtistsAlbumsInReleaseOrder) {
    addTwoArtists();
    const Texts sun{"Sun A", "Sun B", "Guest Song", "Sun D"};
    EXPECT_EQ(titles(*query(MediaGrouping::Album,
                            {is(Item::AlbumPersistentID, valueOf("Sun A", Item::AlbumPersistentID))})),
              sun);
    const auto ofAnn =
        query(MediaGrouping::AlbumsOfArtist,
              {is(Item::AlbumArtistPersistentID, valueOf("Old", Item::AlbumArtistPersistentID)),
               is(Item::MediaType, zornic::MediaType::Music)});
    EXPECT_EQ(names(*ofAnn, Collection::AlbumTitle), (Texts{"Moon", "Sun", "Attic"}));
    EXPECT_EQ(titles(*ofAnn), (Texts{"Old", "Sun A", "Sun B", "Guest Song", "Sun D", "Undated"}));
    const auto album =
        std::dynamic_pointer_cast<zornic::MediaItemCollection>(ofAnn->collections()->entityAtIndex(1));
    EXPECT_EQ(titles(*album->itemsQuery()), sun);
    EXPECT_EQ(album->itemsQuery()->totalAggregate(Item::PlaybackDuration), 70);
    EXPECT_EQ(ofAnn->maxAggregate(Item::PlaybackDuration), 30);
    EXPECT_EQ(album->valueForProperty(Collection::AlbumArtist).asText(), "Ann");
    EXPECT_EQ(album->representativeItem()->title(), "Sun A");
}

TEST_F(LibraryQuery, OrdersByTheSettingsOfTheDriver) {
    addTwoArtists();
    const MediaPredicate music = is(Item::MediaType, 1);
    EXPECT_EQ(titles(*query({}, {music},
                            {Item::Artist, Item::AlbumTitle, Item::DiscNumber, Item::AlbumTrackNumber})),
              (Texts{"Undated", "Old", "Sun A", "Sun B", "Sun D", "Zoo", "Guest Song", "Compiled"}));
    EXPECT_EQ(titles(*query({}, {music}, {Item::AlbumArtist, Item::AlbumTitle})),
              (Texts{"Undated", "Old", "Sun A", "Sun B", "Guest Song", "Sun D", "Zoo", "Compiled"}));
    EXPECT_EQ(titles(*query(MediaGrouping::Genre, {is(Item::Genre, "Jazz")},
                            {Item::Title, Item::ArtistPersistentID, Item::AlbumPersistentID})),
              (Texts{"Guest Song", "Old", "Sun B", "Sun D", "Undated"}));
    EXPECT_EQ(names(*query(MediaGrouping::Album, {music}, {Item::Artist, Item::AlbumTitle}),
                    Collection::AlbumTitle),
              (Texts{"Attic", "Moon", "Sun", "Hits", "Mix"}));
}

TEST_F(LibraryQuery, PlaylistsKeepTheirOrderAndFoldersHoldWhatIsInside) {
    addTwoArtists();
    {
        Database database(databaseFile(), Database::Access::ReadWrite);
        database.execute(
            "INSERT INTO playlist (id, pid, name, sort_key, parent_id, is_folder) VALUES (1, 101, 'Drive', "
            "x'0001', NULL, 0),"
            "(2, 102, 'Folder', x'0002', NULL, 1), (3, 103, 'Inside', x'0003', 2, 0), (4, 104, 'Loop', "
            "x'0004', 4, 1);"
            "INSERT INTO playlist_item SELECT 1, 0, id FROM track WHERE title = 'Zoo';"
            "INSERT INTO playlist_item SELECT 1, 1, id FROM track WHERE title = 'Old';"
            "INSERT INTO playlist_item SELECT 1, 2, id FROM track WHERE title = 'Zoo';"
            "INSERT INTO playlist_item SELECT 3, 0, id FROM track WHERE title = 'Sun A'");
    }
    const auto itemsOf = [&](std::uint64_t id) {
        return titles(*query({}, {is(Playlist::PersistentID, id)}));
    };
    EXPECT_EQ(itemsOf(101), (Texts{"Zoo", "Old", "Zoo"}));
    EXPECT_EQ(itemsOf(102), Texts{"Sun A"});
    EXPECT_EQ(itemsOf(104), Texts{});  // a folder inside itself ends
    EXPECT_EQ(query({}, {is(Playlist::PersistentID, 101)})->totalAggregate(Item::PlaybackDuration), 30);

    const auto level = [&](std::uint64_t parent) {
        return names(*query(MediaGrouping::Playlist,
                            {is(Playlist::ParentPersistentID, parent), is(Playlist::IsHidden, false)}),
                     Playlist::Name);
    };
    EXPECT_EQ(level(0), (Texts{"Drive", "Folder"}));
    EXPECT_EQ(level(102), Texts{"Inside"});
    EXPECT_EQ(query(MediaGrouping::Playlist, {is(Playlist::IsBrivoMix, true)})->_countOfCollections(), 0u);
    // The artists of what a playlist holds.
    EXPECT_EQ(names(*query(MediaGrouping::Artist, {is(Playlist::PersistentID, 101)}), Collection::ArtistName),
              (Texts{"Ann", "Bob"}));

    _library->removePlaylist(zornic::MediaPlaylist(101, _library));
    ASSERT_TRUE(zornic::BackgroundWork::waitUntilIdle(std::chrono::seconds(10)));
    EXPECT_EQ(level(0), Texts{"Folder"});
    EXPECT_EQ(query({}, {is(Item::Title, "Zoo")})->_countOfItems(), 1u);
}

TEST_F(LibraryQuery, ItemsAnswerWithAllThatIsKnown) {
    auto one = track("One", "Ann", "Sun", 2, 7, "Jazz", 2001);
    one.trackCount = 9;
    one.isExplicit = true;
    one.releaseDate = zornic::Date(std::chrono::hours(24 * 365));
    one.picture = 4711;
    add({one, tags("Bare")});
    const auto listed = item(*query({}, {is(Item::Title, "One")}), 0);
    const auto known = _library->itemWithPersistentID(listed->persistentID(), true);
    ASSERT_TRUE(known && listed->isEqual(*known));
    for (const auto& each : {listed, known}) {
        EXPECT_EQ(each->albumTitle() + "/" + each->albumArtist() + "/" + each->genre(), "Sun/Ann/Jazz");
        EXPECT_EQ(each->valueForProperty(Item::DiscNumber), zornic::Value(2));
        EXPECT_EQ(each->valueForProperty(Item::AlbumTrackCount), zornic::Value(9));
        EXPECT_TRUE(each->isExplicit());
        EXPECT_EQ(each->valueForProperty(Item::ReleaseDate).asDate(), one.releaseDate);
        EXPECT_EQ(each->valueForProperty(Item::ArtworkToken).asText(), "embedded:4711");
        EXPECT_EQ(each->valueForProperty(Item::Location).asText(), "/nowhere/1.mp3");
        EXPECT_FALSE(each->bookmarkTime());
    }
    EXPECT_FALSE(item(*query({}, {is(Item::Title, "Bare")}), 0)->valueForProperty(Item::Artist));
    EXPECT_FALSE(_library->itemWithPersistentID(12345, true));
    EXPECT_TRUE(_library->itemWithPersistentID(12345, false));

    _library->noteItemPlayed(listed->persistentID());
    ASSERT_TRUE(zornic::BackgroundWork::waitUntilIdle(std::chrono::seconds(10)));
    EXPECT_EQ(_library->valuesOfItem(listed->persistentID(), {Item::PlayCount}).at(Item::PlayCount),
              zornic::Value(1));
    EXPECT_TRUE(_library->valuesOfItem(listed->persistentID(), {Item::LastPlayedDate})
                    .contains(Item::LastPlayedDate));
}

/** A library so large that lists are read in pieces. */
class LargeLibrary : public LibraryQuery {
protected:
    static constexpr std::uint64_t size = 5'000;
    void addMany(std::uint64_t count) {
        std::mt19937 random(1);
        const auto letter = [&] { return std::string(1, static_cast<char>('a' + random() % 26)); };
        std::vector<TrackTags> tracks;
        for (std::uint64_t at = 0; at < count; ++at)
            tracks.push_back(track(
                letter() + letter() + "x " + std::to_string(at), "Artist " + std::to_string(random() % 300),
                "Album " + std::to_string(random() % 9), 1, static_cast<int>(random() % 20), "Pop", 2000));
        add(tracks);
    }
};

TEST_F(LargeLibrary, RandomAccessAgreesWithTheWholeOrder) {
    addMany(size);
    for (const Texts& ordering : {Texts{}, Texts{Item::Artist, Item::AlbumTitle}}) {
        const auto whole = titles(*query({}, {}, ordering));
        ASSERT_EQ(whole.size(), size);
        // Each access meets a list that has not been read yet, as after a jump by the index bar.
        for (const std::uint64_t index : {0u, 63u, 64u, 700u, 2'499u, 4'321u, 4'999u}) {
            const auto fresh = query({}, {}, ordering);
            const auto there = item(*fresh, index);
            ASSERT_TRUE(there);
            EXPECT_EQ(there->title(), whole[index]);
            EXPECT_EQ(whole[fresh->items()->indexOfEntity(*there)], there->title());
            EXPECT_FALSE(item(*fresh, size));
        }
        std::uint64_t covered = 0;
        const auto fresh = query({}, {}, ordering);
        for (const auto& section : fresh->itemSections()) {
            EXPECT_EQ(section.range.location, covered);
            EXPECT_EQ(item(*fresh, section.range.location)->title(), whole[section.range.location]);
            covered = section.range.end();
        }
        EXPECT_EQ(covered, size);
    }
    // By title the order is the plain one: two letters, then the number by value.
    auto sorted = titles(*query());
    EXPECT_TRUE(std::ranges::is_sorted(sorted, {}, [](const std::string& title) {
        return std::pair(title.substr(0, 3), std::stoi(title.substr(4)));
    }));
}

TEST_F(LargeLibrary, AListKeepsItsCountWhateverHappensToItsRows) {
    addMany(2'000);
    const auto result = _library->evaluate({});
    const auto items = result->items();
    const auto last = items->entityAtIndex(1'999u);
    ASSERT_TRUE(_library->write([](TrackStore& store) {
        for (const auto& [id, path] : store.folders()) store.hideFolder(id);
    }));
    EXPECT_EQ(items->count(), 2'000u);
    EXPECT_FALSE(items->entityAtIndex(1'000));
    EXPECT_EQ(items->indexOfEntity(*last), 1'999u);
    EXPECT_EQ(_library->evaluate({})->items()->count(), 0u);
    EXPECT_FALSE(_library->hasSongs());
}

}  // namespace
}  // namespace helmo
