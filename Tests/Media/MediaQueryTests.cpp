#include <atomic>
#include <thread>

#include "Platform/Foundation/IndexPath.h"
#include "Platform/Media/MediaQuery.h"
#include "Tests/Media/MediaFixture.h"

namespace zornic {
namespace {

using MediaQueryTest = MediaFixture;

std::vector<std::string> titles(const MediaEntityList& list) {
    std::vector<std::string> all;
    for (std::uint64_t index = 0; index < list.count(); ++index)
        all.push_back(list.entityAtIndex(index)->valueForProperty(MediaItemProperty::Title).asText());
    return all;
}

TEST_F(MediaQueryTest, AResultIsKeptUntilTheQueryOrTheLibraryChanges) {
    library->addSong("B", "Artist", "Album");
    const auto query = MediaQuery::songsQuery();
    EXPECT_EQ(query->_countOfItems(), 1U);
    query->items();
    query->_setOrderingProperties({});
    EXPECT_EQ(query->itemSections().size(), 1U);
    EXPECT_EQ(library->evaluations, 1) << "asking again, or changing nothing, costs nothing";

    library->addSong("A", "Artist", "Album");
    EXPECT_EQ(titles(*query->items()), (std::vector<std::string>{"A", "B"}));
    query->addFilterPredicate(MediaPredicate::property(MediaItemProperty::Title, "B"));
    EXPECT_EQ(titles(*query->items()), std::vector<std::string>{"B"});
    query->removePredicatesForProperty(MediaItemProperty::Title);
    EXPECT_EQ(query->_countOfItems(), 2U);
    EXPECT_EQ(library->evaluations, 4);
}

TEST_F(MediaQueryTest, WithoutALibraryEverythingIsEmptyAndALaterLibraryIsAsked) {
    library->addSong("A", "Artist", "Album");
    const auto query = MediaQuery::songsQuery();
    EXPECT_EQ(query->_countOfItems(), 1U);
    MediaLibrary::setDefaultLibrary(nullptr);
    EXPECT_EQ(query->_countOfItems(), 0U);
    EXPECT_EQ(query->_countOfCollections(), 0U);
    EXPECT_TRUE(query->collectionSections().empty());
    EXPECT_EQ(query->maxAggregate(MediaItemProperty::PlaybackDuration), 0);

    const auto other = make<FakeMediaLibrary>();
    other->addSong("B", "Artist", "Album");
    ASSERT_EQ(other->generation(), library->generation());
    MediaLibrary::setDefaultLibrary(other);
    EXPECT_EQ(titles(*query->items()), std::vector<std::string>{"B"});
}

TEST_F(MediaQueryTest, EqualityCountsGroupingAndTheSetOfPredicates) {
    const auto rock = MediaPredicate::property(MediaItemProperty::Genre, "Rock");
    const auto either =
        MediaPredicate::anyOf({rock, MediaPredicate::property(MediaItemProperty::Genre, "Pop")});
    const auto query = make<MediaQuery>();
    const auto other = make<MediaQuery>();
    query->addFilterPredicate(rock);
    query->addFilterPredicate(either);
    other->addFilterPredicate(either);
    EXPECT_FALSE(query->isEqual(*other));
    EXPECT_FALSE(other->isEqual(*query));
    other->addFilterPredicate(rock);
    other->addFilterPredicate(rock);
    other->_setOrderingProperties({MediaItemProperty::Artist});
    other->setUseSections(false);
    EXPECT_TRUE(query->isEqual(*other));
    other->removeFilterPredicate(rock);
    EXPECT_TRUE(query->isEqual(*other)) << "only the first of two equal ones is removed";
    other->setGroupingType(MediaGrouping::Album);
    EXPECT_FALSE(query->isEqual(*other));

    const auto copy = other->copy();
    EXPECT_EQ(copy->description(), other->description());
    copy->setFilterPredicateForProperty(MediaItemProperty::Genre, "Jazz");
    EXPECT_EQ(copy->filterPredicates().size(), 2U) << "the choice is kept, the filter is replaced";
    EXPECT_EQ(copy->predicateForProperty(MediaItemProperty::Genre)->value(), Value("Jazz"));
    EXPECT_EQ(other->predicateForProperty(MediaItemProperty::Genre)->value(), Value("Rock"));
    EXPECT_FALSE(query->specifiesPlaylistItems());
}

TEST_F(MediaQueryTest, AChangeDuringAnEvaluationIsNotLost) {
    library->addSong("A", "Artist", "Album");
    library->addSong("B", "Artist", "Album");
    const auto query = MediaQuery::songsQuery();
    library->onEvaluate = [&, changed = false]() mutable {
        if (std::exchange(changed, true)) return;
        // Would hang if the query held its lock while the library evaluates.
        query->setFilterPredicateForProperty(MediaItemProperty::Title, "B");
        library->addSong("C", "Artist", "Album");
    };
    query->items();
    EXPECT_EQ(titles(*query->items()), std::vector<std::string>{"B"});
}

TEST_F(MediaQueryTest, ResultsMayBeReadOnAnyThreadWhileTheOwnerChangesTheQuery) {
    for (int song = 0; song < 20; ++song) library->addSong("Song " + std::to_string(song), "Artist", "Album");
    const auto query = MediaQuery::songsQuery();
    std::atomic<bool> wrong{false};
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 3; ++reader)
        readers.emplace_back([&] {
            for (int turn = 0; turn < 50; ++turn) {
                const auto count = query->_countOfItems();
                if (count != 1 && count < 20) wrong = true;
            }
        });
    for (int turn = 0; turn < 20; ++turn) {
        query->setFilterPredicateForProperty(MediaItemProperty::Title, "Song 3");
        query->removePredicatesForProperty(MediaItemProperty::Title);
        library->addSong("More", "Artist", "Album");
    }
    for (auto& reader : readers) reader.join();
    EXPECT_FALSE(wrong);
    EXPECT_EQ(query->_countOfItems(), 40U);
}

TEST_F(MediaQueryTest, AnItemFetchesEachValueOnceEvenAMissingOne) {
    const auto id = library->addSong("Title", "Artist", "Album");
    const auto item = library->itemWithPersistentID(id, false);
    EXPECT_EQ(item->title(), "Title");
    EXPECT_EQ(item->composer(), "");
    EXPECT_EQ(library->fetches, 2);
    library->setValue(id, MediaItemProperty::Composer, "Late");
    EXPECT_EQ(item->title(), "Title");
    EXPECT_EQ(item->composer(), "");
    EXPECT_EQ(library->fetches, 2);

    const auto values = item->valuesForProperties({MediaItemProperty::Title, MediaItemProperty::Artist,
                                                   MediaItemProperty::AlbumTitle, MediaItemProperty::Year});
    EXPECT_EQ(values.size(), 3U) << "what is missing is left out";
    EXPECT_EQ(library->fetches, 3) << "all that is unknown comes in one fetch";
    EXPECT_EQ(library->itemWithPersistentID(id, false)->composer(), "Late");
    EXPECT_EQ(item->bookmarkTime(), std::nullopt);
    library->setValue(id, MediaItemProperty::BookmarkTime, 12.0);
    EXPECT_EQ(item->bookmarkTime(), 12) << "it moves while the item plays";
    EXPECT_EQ(library->itemWithPersistentID(0, false), nullptr);
    EXPECT_EQ(library->itemWithPersistentID(99, true), nullptr);
}

TEST_F(MediaQueryTest, EntitiesAreEqualByWhatTheyName) {
    const auto one = library->addSong("One", "Same", "Same", 1);
    library->addSong("Two", "Same", "Same", 2);
    const auto other = make<FakeMediaLibrary>();
    other->addSong("One", "Same", "Same", 1);

    const auto item = library->itemWithPersistentID(one, false);
    EXPECT_EQ(MediaQuery::songsQuery()->items()->indexOfEntity(*item), 0U);
    EXPECT_FALSE(item->isEqual(*other->itemWithPersistentID(one, false)))
        << "the same number in another library";
    const auto album = MediaQuery::albumsQuery()->collections()->entityAtIndex(0);
    const auto artist = MediaQuery::artistsQuery()->collections()->entityAtIndex(0);
    EXPECT_TRUE(isSameEntity(album, MediaQuery::albumsQuery()->collections()->entityAtIndex(0)));
    EXPECT_FALSE(isSameEntity(album, artist));
    EXPECT_FALSE(isSameEntity(nullptr, nullptr));
    EXPECT_EQ(MediaQuery::songsQuery()->items()->indexOfEntity(*album), NotFound);

    const auto playlist = library->addPlaylist("List", {one});
    const auto listed = MediaQuery::playlistsQuery()->collections()->entityAtIndex(0);
    EXPECT_TRUE(listed->isEqual(*make<MediaPlaylist>(playlist)));
    EXPECT_FALSE(listed->isEqual(
        *make<MediaItemCollection>(library, playlist, Dictionary(), MediaQueryDescription())));
}

TEST_F(MediaQueryTest, CollectionsAndPlaylistsAnswerForTheirItems) {
    using namespace MediaItemProperty;
    library->addSong("Second", "Artist", "Album", 2, {{Year, 1999}});
    const auto first = library->addSong("First", "Artist", "Album", 1, {{Year, 1998}});
    const auto album = std::dynamic_pointer_cast<MediaItemCollection>(
        MediaQuery::albumsQuery()->collections()->entityAtIndex(0));
    EXPECT_EQ(titles(*album->items()), (std::vector<std::string>{"First", "Second"}));
    EXPECT_EQ(album->count(), 2U);
    EXPECT_EQ(album->representativeItem()->persistentID(), first);
    EXPECT_EQ(album->valueForProperty(Year), Value(1998));
    EXPECT_NE(album->itemsQuery(), album->itemsQuery());

    const auto folderID = library->addPlaylist("Folder", {}, {{MediaPlaylistProperty::IsFolder, true}});
    library->addPlaylist("Inside", {first, first}, {{MediaPlaylistProperty::ParentPersistentID, folderID}});
    const auto folder = make<MediaPlaylist>(folderID);
    EXPECT_EQ(folder->name(), "Folder");
    EXPECT_TRUE(folder->isFolder());
    EXPECT_EQ(folder->parentPersistentID(), 0U);
    const int fetched = library->fetches;
    EXPECT_EQ(folder->name(), "Folder");
    EXPECT_EQ(folder->parentPersistentID(), 0U);
    EXPECT_EQ(library->fetches, fetched);
    EXPECT_EQ(titles(*folder->items()), (std::vector<std::string>{"First", "First"}));
    EXPECT_TRUE(folder->itemsQuery()->specifiesPlaylistItems());

    MediaLibrary::setDefaultLibrary(nullptr);
    bool failed = false;
    make<MediaPlaylist>(folderID)->populateWithSeedItem(nullptr,
                                                        [&](auto error) { failed = error.has_value(); });
    EXPECT_FALSE(failed);
    loop->runDue();
    EXPECT_TRUE(failed);
}

}  // namespace
}  // namespace zornic
