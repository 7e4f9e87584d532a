#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ViewControllerZornicAdditions.h"
#include "View Controllers/ZRNCompilationsTableViewController.h"

namespace zornic {
namespace {

class CompilationsScreenTest : public testing::Test, protected ScreenFixture {
protected:
    CompilationsScreenTest() { ZRN_registerViewControllerIdentifiers(); }
    void addAlbum(const std::string& title, const std::string& albumArtist) {
        using namespace MediaItemProperty;
        for (const char* artist : {"Anna", "Ben"})
            library->addSong("Song", artist, title, 1, {{AlbumArtist, albumArtist}, {IsCompilation, true}});
    }
    std::shared_ptr<ZRNCompilationsTableViewController> open() {
        const auto list =
            make<ZRNCompilationsTableViewController>(MediaQuery::compilationsQuery(), player, nullptr);
        stack = make<NavigationController>(list);
        show(stack);
        return list;
    }
    static std::shared_ptr<TableViewCell> row(TableViewController& list, std::uint64_t index) {
        return list.tableView()->cellForRowAtIndexPath({0, index});
    }

    std::shared_ptr<NavigationController> stack;
};

TEST_F(CompilationsScreenTest, ACompilationLeadsToItsSongs) {
    addAlbum("Summer", "Various");
    addAlbum("Winter", "");
    library->addSong("Song", "Anna", "Own Album");
    const auto list = open();
    ASSERT_EQ(list->tableView()->numberOfRowsInSection(0), 2U);
    EXPECT_EQ(row(*list, 0)->accessibilityText(), "Summer, Various");
    EXPECT_EQ(row(*list, 1)->accessibilityText(), "Winter, Anna") << "the artist stands for the album's";

    tap(*row(*list, 0));
    advance(1);
    const auto album = std::dynamic_pointer_cast<QueryTableViewController>(stack->topViewController());
    ASSERT_TRUE(album);
    const auto query = album->queryDataSource()->query();
    EXPECT_EQ(query->groupingType(), MediaGrouping::Album);
    EXPECT_EQ(query->filterPredicates().size(), list->query()->filterPredicates().size() + 1);
    EXPECT_EQ(list->query()->_countOfCollections(), 2U) << "the list's own query stays as it is";
}

TEST_F(CompilationsScreenTest, OneWithoutATitleIsNamedOnItsOwnScreenToo) {
    using namespace MediaItemProperty;
    library->addSong("Song", "Anna", "", 1, {{AlbumPersistentID, 7}, {IsCompilation, true}});
    const auto list = open();
    tap(*row(*list, 0));
    advance(1);
    const auto album = std::dynamic_pointer_cast<QueryTableViewController>(stack->topViewController());
    ASSERT_TRUE(album);
    EXPECT_EQ(album->title(), "Unknown album");
    album->reloadData();
    EXPECT_EQ(album->title(), "") << "from then on as the tags say";
}

}  // namespace
}  // namespace zornic
