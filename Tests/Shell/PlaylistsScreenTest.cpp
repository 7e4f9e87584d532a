#include <set>

#include "Data Sources/ZRNPlaylistsDataSource.h"
#include "Platform/LibraryKit/RestrictionsMonitor.h"
#include "Platform/Media/CloudController.h"
#include "Platform/Services/StoreClientNetworkObserver.h"
#include "Tests/Shell/LibraryScreens.h"
#include "Utilities/MediaPlaylistZRNPlaylistDataSourceAdditions.h"
#include "View Controllers/ZRNPlaylistsViewController.h"
#include "View Controllers/ZRNSongsViewController.h"

namespace zornic {
namespace {

constexpr const char *folderFlag = MediaPlaylistProperty::IsFolder,
                     *parent = MediaPlaylistProperty::ParentPersistentID;

/** A library with, at the top: the playlists Road (Elm, Ash) and Bare (nothing), the folders Trips and
   Hollow. In Trips: the folder Alps with the playlist Zermatt (Bay), the playlist Beach (Ash) and a hidden
   one. In Hollow: a folder with an empty playlist. Elsewhere hidden: a playlist and a mix. */
class PlaylistsScreenTest : public testing::Test, protected LibraryScreens {
protected:
    PlaylistsScreenTest() {
        addSongs({"Ash", "Bay", "Elm"});
        road = library->addPlaylist("Road", {idOf("Elm"), idOf("Ash")},
                                    {{MediaPlaylistProperty::IsDeletable, true}});
        library->addPlaylist("Bare", {});
        library->addPlaylist("Secret", {idOf("Ash")}, {{MediaPlaylistProperty::IsHidden, true}});
        library->addPlaylist("Mix", {idOf("Ash")}, {{MediaPlaylistProperty::IsBrivoMix, true}});
        trips = folder("Trips", 0);
        library->addPlaylist("Zermatt", {idOf("Bay")}, {{parent, folder("Alps", trips)}});
        library->addPlaylist("Beach", {idOf("Ash")}, {{parent, trips}});
        library->addPlaylist("Hidden inside", {idOf("Ash")},
                             {{parent, trips}, {MediaPlaylistProperty::IsHidden, true}});
        library->addPlaylist("Void", {}, {{parent, folder("Inner", folder("Hollow", 0))}});
    }
    ~PlaylistsScreenTest() override {
        CloudController::shared().setCloudEnabled(false);
        RestrictionsMonitor::shared().setAllowsDeletion(true);
        StoreClientNetworkObserver::shared()->setNetworkType(0);
    }

    PersistentID folder(const std::string& name, PersistentID inside) {
        return library->addPlaylist(name, {}, {{folderFlag, true}, {parent, inside}});
    }
    static PersistentID idOf(const std::string& title) {
        const auto items = MediaQuery::songsQuery()->items();
        for (std::uint64_t at = 0; at < items->count(); ++at)
            if (const auto item = items->entityAtIndex(at);
                item->valueForProperty(MediaItemProperty::Title).asText() == title)
                return item->persistentID();
        return 0;
    }
    void open() { openTab(ZRNPlaylistsViewControllerIdentifier); }
    std::shared_ptr<TableViewCell> row(const std::string& title) const {
        for (const auto& shown : table().visibleCells())
            if (shown->textLabel()->text() == title) return shown;
        return nullptr;
    }
    /** Chooses a row; the screen that is then on top. */
    std::shared_ptr<ViewController> choose(const std::string& title) {
        if (const auto chosen = row(title)) tap(*chosen);
        advance(1);
        return browser->topViewController();
    }
    template <class Screen>
    bool opens(const std::string& title) {
        return std::dynamic_pointer_cast<Screen>(choose(title)) != nullptr;
    }
    static std::shared_ptr<ZRNPlaylistsDataSource> sourceOf(std::shared_ptr<MediaQuery> query) {
        return make<ZRNPlaylistsDataSource>(std::move(query), EntityType::Collections);
    }
    static std::uint64_t indexOf(ZRNPlaylistsDataSource& source, const std::string& name) {
        for (std::uint64_t at = 0; at < source.count(); ++at)
            if (std::dynamic_pointer_cast<MediaPlaylist>(source.entityAtIndex(at))->name() == name) return at;
        return NotFound;
    }

    PersistentID road = 0, trips = 0;
};

TEST_F(PlaylistsScreenTest, FoldersOpenTheirContentsAndPlaylistsTheirSongs) {
    library->addPlaylist("", {idOf("Ash")});
    open();
    EXPECT_EQ(rows(), (Rows{"Bare", "Hollow", "Road", "Trips", "Unknown title"}));
    list().navigationItem()->setPrompt("Over it");

    ASSERT_TRUE(opens<ZRNPlaylistsViewController>("Trips"));
    EXPECT_EQ(list().title(), "Trips");
    EXPECT_EQ(list().navigationItem()->prompt(), "Over it");
    EXPECT_TRUE(list().navigationItem()->rightBarButtonItem());
    EXPECT_EQ(rows(), (Rows{"Alps", "Beach", "Hidden inside"}));
    choose("Alps");
    browser->popToViewController(browser->viewControllers().front(), false);
    advance(0);
    EXPECT_TRUE(table().indexPathsForSelectedRows().empty());

    ASSERT_TRUE(opens<ZRNSongsViewController>("Road"));
    EXPECT_EQ(list().navigationItem()->prompt(), "Over it");
}

TEST_F(PlaylistsScreenTest, OnlyWhatReallyHoldsNothingSaysSo) {
    open();
    for (const char* name : {"Bare", "Hollow"}) {
        const auto shown = choose(name);
        ASSERT_TRUE(std::dynamic_pointer_cast<ZRNNoContentView>(shown->view())) << name;
        EXPECT_EQ(shown->title(), name);
        EXPECT_EQ(shown->view()->frame().width(), 800);
        EXPECT_FALSE(browser->isNavigationBarHidden()) << "and has a way back";
        browser->popViewControllerAnimated(false);
        advance(0);
    }
    EXPECT_TRUE(opens<ZRNPlaylistsViewController>("Trips")) << "only folders of folders hold songs, too";
}

TEST_F(PlaylistsScreenTest, TheRowWhosePlaylistPlaysIsMarked) {
    open();
    play(MediaQuery::songsQuery(), 0);
    EXPECT_FALSE(row("Road")->showsPlayingMark()) << "its song, from another list";
    const auto song = make<MediaQuery>();
    song->addFilterPredicate(MediaPredicate::property(MediaPlaylistProperty::PersistentID, road));
    play(song, 0);
    EXPECT_TRUE(row("Road")->showsPlayingMark());
    EXPECT_FALSE(row("Trips")->showsPlayingMark());
    player->stop();
    advance(0);
    EXPECT_FALSE(row("Road")->showsPlayingMark());
}

TEST_F(PlaylistsScreenTest, WhatCostsAWalkOverTheSongsIsDoneOnceInTheBackground) {
    const auto source = sourceOf(MediaQuery::playlistsQuery());
    const auto at = indexOf(*source, "Road"), bare = indexOf(*source, "Bare"),
               inside = indexOf(*source, "Trips");
    std::set<std::thread::id> threads;
    library->onEvaluate = [&] { threads.insert(std::this_thread::get_id()); };
    const int before = library->evaluations;
    EXPECT_EQ(source->cachedCountForEntityAtIndex(at), 0U);
    EXPECT_EQ(source->countForEntityAtIndex(at), 2U);
    EXPECT_EQ(source->durationForEntityAtIndex(at), 360);
    EXPECT_EQ(source->countForEntityAtIndex(at), 2U);
    EXPECT_EQ(source->durationForEntityAtIndex(at), 360);
    EXPECT_EQ(library->evaluations, before + 2);
    EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
    EXPECT_EQ(source->cachedCountForEntityAtIndex(at), 2U);

    EXPECT_TRUE(source->isFolderForEntityAtIndex(inside));
    EXPECT_EQ(source->countForEntityAtIndex(inside) + source->countForEntityAtIndex(NotFound), 0U);
    EXPECT_EQ(source->durationForEntityAtIndex(inside), 0);
    EXPECT_EQ(library->evaluations, before + 2) << "a folder is not counted";
    EXPECT_EQ(source->countForEntityAtIndex(bare) + source->countForEntityAtIndex(bare), 0U);
    EXPECT_EQ(library->evaluations, before + 4) << "nothing is no answer to keep";

    library->removeItem(idOf("Elm"));
    EXPECT_EQ(source->countForEntityAtIndex(at), 2U);
    source->invalidate();
    EXPECT_EQ(source->cachedCountForEntityAtIndex(at), 0U);
    EXPECT_EQ(source->cachedDurationForEntityAtIndex(at), 0);
    EXPECT_EQ(source->countForEntityAtIndex(at), 1U);
    library->onEvaluate = nullptr;
}

TEST_F(PlaylistsScreenTest, AFolderIsRepresentedByTheFirstPlaylistInItDepthFirst) {
    const auto source = sourceOf(MediaQuery::playlistsQuery());
    const auto titleFor = [&](const char* name) {
        const auto item = source->representativeItemForEntityAtIndex(indexOf(*source, name));
        return item ? item->title() : "(none)";
    };
    EXPECT_EQ(titleFor("Trips"), "Bay") << "in Alps, though Beach lies higher";
    EXPECT_EQ(titleFor("Road"), "Elm");
    EXPECT_EQ(titleFor("Bare"), "(none)");
    EXPECT_EQ(titleFor("Hollow"), "(none)");
    EXPECT_EQ(source->representativeItemForEntityAtIndex(NotFound), nullptr);
    const int before = library->evaluations;
    EXPECT_EQ(titleFor("Trips"), "Bay");
    EXPECT_EQ(library->evaluations, before);
    EXPECT_TRUE(source->cachedRepresentativeItemForEntityAtIndex(indexOf(*source, "Road")));
    source->resetCaches();
    EXPECT_FALSE(source->cachedRepresentativeItemForEntityAtIndex(indexOf(*source, "Road")));

    Rows visited;
    const auto note = [&](const auto& playlist, bool& stop) {
        visited.push_back(playlist->name());
        stop = playlist->name() == "Beach";
    };
    source->_breadthFirstVisitNonFolderPlaylistsWithRootPlaylistVisitor(make<MediaPlaylist>(trips), note);
    EXPECT_EQ(visited, (Rows{"Zermatt", "Beach"}));
    // A library may be wrong: a folder that lies in itself is walked once.
    constexpr PersistentID ring = 9000;
    library->addPlaylist("Ring", {},
                         {{folderFlag, true}, {parent, ring}, {MediaPlaylistProperty::PersistentID, ring}});
    library->addPlaylist("In the ring", {}, {{parent, ring}});
    visited.clear();
    source->_breadthFirstVisitNonFolderPlaylistsWithRootPlaylistVisitor(make<MediaPlaylist>(ring), note);
    EXPECT_EQ(visited, Rows{"In the ring"});
    // And what a mere playlist holds is seen twice: beneath it, and for itself.
    library->addPlaylist("Lane", {}, {{parent, road}});
    visited.clear();
    source->_breadthFirstVisitNonFolderPlaylistsWithRootPlaylistVisitor(make<MediaPlaylist>(road), note);
    EXPECT_EQ(visited, (Rows{"Road", "Lane", "Lane"}));
}

TEST_F(PlaylistsScreenTest, AnotherNetworkReloadsTheListOfACloudLibrary) {
    auto source = sourceOf(MediaQuery::playlistsQuery());
    const auto at = indexOf(*source, "Road");
    const auto change = [&](std::int64_t type) {
        std::thread([&] { StoreClientNetworkObserver::shared()->setNetworkType(type); }).join();
    };
    source->countForEntityAtIndex(at);
    change(1);
    advance(0);
    EXPECT_EQ(source->cachedCountForEntityAtIndex(at), 2U);
    CloudController::shared().setCloudEnabled(true);
    change(1);
    advance(0);
    EXPECT_EQ(source->cachedCountForEntityAtIndex(at), 2U) << "the same network";
    change(2);
    EXPECT_EQ(source->cachedCountForEntityAtIndex(at), 2U) << "not on the posting thread";
    advance(0);
    EXPECT_EQ(source->cachedCountForEntityAtIndex(at), 0U);
    change(0);
    const std::weak_ptr<ZRNPlaylistsDataSource> gone = source;
    source = nullptr;
    advance(0);
    EXPECT_TRUE(gone.expired());
    change(3);
    advance(0);
}

TEST_F(PlaylistsScreenTest, OnlyTheDriversOwnPlaylistsOfThisDeviceAreDeleted) {
    const auto source = sourceOf(MediaQuery::playlistsQuery());
    const auto at = indexOf(*source, "Road"), bare = indexOf(*source, "Bare");
    EXPECT_EQ(source->editingTypeForEntityAtIndex(at), 1);
    EXPECT_EQ(source->editingTypeForEntityAtIndex(bare), 0);
    EXPECT_EQ(source->editingTypeForEntityAtIndex(NotFound), 0);
    EXPECT_FALSE(source->canEditEntityAtIndex(NotFound));
    RestrictionsMonitor::shared().setAllowsDeletion(false);
    EXPECT_EQ(source->editingTypeForEntityAtIndex(at), 0);
    EXPECT_TRUE(source->canEditEntityAtIndex(at));
    RestrictionsMonitor::shared().setAllowsDeletion(true);

    library->deviceLibrary = false;
    EXPECT_FALSE(source->canEditEntityAtIndex(at));
    EXPECT_EQ(source->editingTypeForEntityAtIndex(at), 0);
    source->deleteEntityAtIndex(at);
    source->_invalidateCalculatedEntities();
    EXPECT_EQ(indexOf(*source, "Road"), at);
    library->deviceLibrary = true;
    source->countForEntityAtIndex(at);
    source->deleteEntityAtIndex(at);
    EXPECT_EQ(indexOf(*source, "Road"), NotFound);
    EXPECT_EQ(source->cachedCountForEntityAtIndex(at), 0U);
}

TEST_F(PlaylistsScreenTest, RowsAreOrderedWhateverTheirCase) {
    const auto named = [&](const char* name) { return make<MediaPlaylist>(library->addPlaylist(name, {})); };
    const auto a = named("a"), b = named("B");
    EXPECT_EQ(ZRN_sortPlaylistByName(*a, *b), Ordering::Ascending);
    EXPECT_EQ(ZRN_sortPlaylistByName(*b, *a), Ordering::Descending);
    EXPECT_EQ(ZRN_sortPlaylistByName(*b, *named("b")), Ordering::Same);
}

}  // namespace
}  // namespace zornic
