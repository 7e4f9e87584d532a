#include <atomic>
#include <random>

#include <sqlite3.h>

#include "Tests/Host/LibraryFixture.h"

namespace helmo {
namespace {

using zornic::MediaComparison;
using zornic::MediaGrouping;
using zornic::MediaPredicate;
namespace MediaType = zornic::MediaType;
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
    // What is gone isn't shown, nor what a second condition shuts out.
    const auto setPresent = [&](const std::string& present) {
        Database(databaseFile(), Database::Access::ReadWrite)
            .execute("UPDATE track SET present = " + present + " WHERE title = 'Old'");
        _library->noteChange();
    };
    setPresent("0");
    EXPECT_EQ(itemsOf(101), (Texts{"Zoo", "Zoo"}));
    setPresent("1");
    EXPECT_EQ(itemsOf(101), (Texts{"Zoo", "Old", "Zoo"}));
    EXPECT_EQ(titles(*query({}, {is(Playlist::PersistentID, 101), is(Item::Title, "Old")})), Texts{"Old"});

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

/** Counts what SQLite does on connections opened while it lives, in steps of its machine. */
class QueryWork {
public:
    QueryWork() {
        counted() = 0;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
    }
    ~QueryWork() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(watch)); }
    std::uint64_t steps() const { return counted(); }

private:
    static constexpr int grain = 10;
    static std::atomic<std::uint64_t>& counted() {
        static std::atomic<std::uint64_t> steps;
        return steps;
    }
    static int watch(sqlite3* database, const char**, const void*) {
        const auto count = [](void*) {
            counted() += grain;
            return 0;
        };
        sqlite3_progress_handler(database, grain, count, nullptr);
        return SQLITE_OK;
    }
};

/** A library so large that lists are read in pieces. */
class LargeLibrary : public LibraryQuery {
protected:
    static constexpr std::uint64_t size = 1'500;
    void addMany(std::uint64_t count) {
        std::mt19937 random(1);
        const auto letter = [&] { return std::string(1, static_cast<char>('a' + random() % 26)); };
        std::vector<TrackTags> tracks;
        for (std::uint64_t at = 0; at < count; ++at) {
            tracks.push_back(track(
                letter() + letter() + "x " + std::to_string(at), "Artist " + std::to_string(random() % 300),
                "Album " + std::to_string(random() % 9), 1, static_cast<int>(random() % 20), "Pop", 2000));
            if (at % 50 == 0) tracks.back().mediaType = MediaType::Audiobook;
            if (at % 20 == 0) tracks.back().composer = letter() + " Composer";
        }
        add(tracks);
    }
    /** All titles in an order, as the tables say without any count. */
    Texts titlesBy(const std::string& keys) const {
        Database database(databaseFile(), Database::Access::ReadOnly);
        Texts result;
        for (auto rows = database.prepare({"SELECT title FROM track WHERE present = 1 ORDER BY " + keys, {}});
             rows.step();)
            result.push_back(rows.text(0));
        return result;
    }
    void expectEveryOrderRight() const {
        expectRight({}, titlesBy("title_key, id"));
        expectRight({Item::Artist, Item::AlbumTitle},
                    titlesBy("artist_key, album_key, album_id, disc_number, track_number, id"));
        expectRight({Item::AlbumArtist, Item::AlbumTitle},
                    titlesBy("album_artist_key, album_key, album_id, disc_number, track_number, id"));
        for (const std::int64_t types : {MediaType::Any, MediaType::Audiobook}) {
            expectCollectionsRight(MediaGrouping::Album, {}, types, "album_id",
                                   "c.sort_key, c.owner_key, c.id");
            expectCollectionsRight(MediaGrouping::Album, {Item::AlbumArtist, Item::AlbumTitle}, types,
                                   "album_id", "c.owner_key, c.sort_key, c.id");
            expectCollectionsRight(MediaGrouping::Artist, {}, types, "artist_id", "c.sort_key, c.id");
            expectCollectionsRight(MediaGrouping::Composer, {}, types, "composer_id", "c.sort_key, c.id");
        }
    }
    /** A list of collections against the tables without any count, gone through, jumped to and searched. */
    void expectCollectionsRight(MediaGrouping grouping, const Texts& ordering, std::int64_t types,
                                const std::string& column, const std::string& keys) const {
        std::vector<zornic::PersistentID> whole;
        Database database(databaseFile(), Database::Access::ReadOnly);
        for (auto rows = database.prepare({"SELECT c.pid FROM collection c WHERE c.id IN (SELECT " + column +
                                               " FROM track WHERE present = 1 AND (media_type & ?) <> 0) "
                                               "ORDER BY " +
                                               keys,
                                           {types}});
             rows.step();)
            whole.push_back(static_cast<zornic::PersistentID>(rows.integer(0)));
        const auto predicate = MediaPredicate::property(Item::MediaType, types);
        const auto list = query(grouping, {predicate}, ordering)->collections();
        ASSERT_EQ(list->count(), whole.size()) << column << ' ' << types;
        for (std::uint64_t at = 0; at < whole.size(); ++at)
            ASSERT_EQ(list->entityAtIndex(at)->persistentID(), whole[at])
                << column << ' ' << types << ' ' << at;
        std::uint64_t covered = 0;
        for (const auto& section : query(grouping, {predicate}, ordering)->collectionSections()) {
            EXPECT_EQ(section.range.location, covered);
            covered = section.range.end();
        }
        EXPECT_EQ(covered, whole.size());
        for (std::uint64_t at = 5; at < whole.size(); at += 211) {
            const auto jumped = query(grouping, {predicate}, ordering)->collections();
            const auto entity = jumped->entityAtIndex(at);
            EXPECT_EQ(entity->persistentID(), whole[at]);
            EXPECT_EQ(jumped->indexOfEntity(*entity), at);
        }
    }
    void expectRight(const Texts& ordering, const Texts& whole) const {
        const auto goneThrough = query({}, {}, ordering), jumped = query({}, {}, ordering);
        ASSERT_EQ(titles(*goneThrough), whole);
        std::uint64_t covered = 0;
        for (const auto& section : jumped->itemSections()) {
            EXPECT_EQ(section.range.location, covered);
            EXPECT_EQ(item(*jumped, covered)->title(), whole[covered]);
            covered = section.range.end();
        }
        EXPECT_EQ(covered, whole.size());
        EXPECT_FALSE(item(*jumped, covered));
        std::mt19937 random(2);
        for (int jump = 0; jump < 30; ++jump) {
            // Upwards from there, as a finger drags.
            const std::uint64_t index = random() % whole.size();
            for (std::uint64_t back = 0; back < std::min<std::uint64_t>(3, index); ++back)
                EXPECT_EQ(item(*jumped, index - back)->title(), whole[index - back]);
            EXPECT_EQ(query({}, {}, ordering)->items()->indexOfEntity(*item(*jumped, index)), index);
        }
    }
};

TEST_F(LargeLibrary, EveryPlaceShowsTheRightRowWhileTracksComeAndGo) {
    addMany(size);
    expectEveryOrderRight();
    // Some go, some are others now.
    Database(databaseFile(), Database::Access::ReadWrite)
        .execute("UPDATE track SET present = 0 WHERE id <= 900 AND id % 3 <> 0");
    ASSERT_TRUE(_library->write([&](TrackStore& store) {
        for (int file = 901; file <= 1'000; ++file)
            store.store({"/nowhere", std::to_string(file) + ".mp3", file, file},
                        tags("Renamed " + std::to_string(file), "Nobody", "Nothing"));
    }));
    _library->noteChange();
    expectEveryOrderRight();
    Database(databaseFile(), Database::Access::ReadWrite)
        .execute(
            "UPDATE track SET present = 1 WHERE id <= 300; DELETE FROM track WHERE id BETWEEN 400 AND 500");
    addMany(100);
    expectEveryOrderRight();
    // By title the order is the plain one: two letters, then the number by value.
    auto sorted = titles(*query({}, {MediaPredicate::property(Item::Artist, "Artist 1")}));
    EXPECT_TRUE(std::ranges::is_sorted(sorted, {}, [](const std::string& title) {
        return std::pair(title.substr(0, 3), std::stoi(title.substr(4)));
    }));
}

TEST_F(LargeLibrary, OpeningAndJumpingReadNoMoreThanAScreen) {
    constexpr std::uint64_t many = 4'000;
    addMany(many);
    const QueryWork work;
    _library = SqliteMediaLibrary::open(databaseFile());
    const auto songs = query();
    EXPECT_EQ(songs->itemSections().size(), 26u);
    // What walking through the list would take at least: a few of SQLite's steps for each row of its index.
    constexpr std::uint64_t stepsOfWalk = many * 5;
    EXPECT_LT(work.steps(), stepsOfWalk);
    for (const std::uint64_t index : {2'499u, 3'990u, 37u, 3'333u}) {
        const auto before = work.steps();
        for (std::uint64_t row = 0; row < 10; ++row) ASSERT_TRUE(item(*songs, index + row));
        EXPECT_EQ(songs->items()->indexOfEntity(*item(*songs, index)), index);
        EXPECT_LT(work.steps() - before, stepsOfWalk / 5);
    }
    // So are all collections.
    const auto beforeAlbums = work.steps();
    const auto albums = query(MediaGrouping::Album, {}, {Item::AlbumArtist, Item::AlbumTitle});
    EXPECT_GT(albums->collectionSections().size(), 0u);
    EXPECT_GT(albums->_countOfCollections(), 1'500u);
    EXPECT_LT(work.steps() - beforeAlbums, stepsOfWalk / 5);
    // What rows show of the items that stand for them is read for all of a screen at once.
    const auto token = [&](std::uint64_t index) {
        return albums->collections()->entityAtIndex(index)->representativeItem()->valueForProperty(
            Item::ArtworkToken);
    };
    EXPECT_FALSE(token(1'234));
    const auto beforeSecond = work.steps();
    EXPECT_FALSE(token(1'235));
    EXPECT_EQ(work.steps(), beforeSecond);
    // And everything on the calling thread: nothing is left to be read behind its back.
    EXPECT_TRUE(zornic::BackgroundWork::isIdle());
}

TEST_F(LargeLibrary, AListKeepsItsCountWhateverHappensToItsRows) {
    addMany(2'000);
    const auto result = _library->evaluate({});
    const auto items = result->items();
    const auto last = items->entityAtIndex(1'999u);
    ASSERT_TRUE(_library->write([](TrackStore& store) { store.hideFolder(store.folderId("/nowhere")); }));
    EXPECT_EQ(items->count(), 2'000u);
    EXPECT_FALSE(items->entityAtIndex(1'000));
    // Where it was shown.
    EXPECT_EQ(items->indexOfEntity(*last), 1'999u);
    EXPECT_EQ(_library->evaluate({})->items()->count(), 0u);
    EXPECT_FALSE(_library->hasSongs());
}

}  // namespace
}  // namespace helmo
