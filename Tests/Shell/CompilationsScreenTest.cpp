#include <gtest/gtest.h>

#include "Cell Configurations/ZRNSongCellConfiguration.h"
#include "Data Sources/ZRNQueryDataSource.h"
#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ViewControllerZornicAdditions.h"
#include "View Controllers/ZRNCompilationsTableViewController.h"
#include "View Controllers/ZRNSongsViewController.h"

namespace zornic {
namespace {

class CompilationsScreenTest : public testing::Test, protected ScreenFixture {
protected:
    CompilationsScreenTest() {
        ZRN_registerViewControllerIdentifiers();
        const auto& registry = ScreenRegistry::shared();
        if (!registry.viewControllerForIdentifierQuery(ZRNAlbumsDetailViewControllerIdentifier,
                                                       MediaQuery::albumsQuery()))
            registerStandIn();
    }
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

private:
    /** Songs where an album's screen would be. */
    static void registerStandIn() {
        ScreenAttributes attributes;
        attributes.configurationClass = &ZRNSongCellConfiguration::instance();
        attributes.dataSourceClass = [](std::shared_ptr<MediaQuery> query, EntityType type) {
            return make<ZRNQueryDataSource>(std::move(query), type);
        };
        attributes.viewControllerClass = [](std::shared_ptr<CompletionQueryDataSource> source,
                                            const BaseCellConfiguration& configuration) {
            return make<ZRNSongsViewController>(std::move(source), configuration);
        };
        ScreenRegistry::shared().registerIdentifierWithAttributesDefaultQueryCreationHandler(
            ZRNAlbumsDetailViewControllerIdentifier, std::move(attributes), {});
    }
};

TEST_F(CompilationsScreenTest, ACompilationLeadsToItsSongs) {
    addAlbum("Summer", "Various");
    addAlbum("Winter", "");
    library->addSong("Song", "Anna", "Own Album");
    const auto list = open();
    ASSERT_EQ(list->tableView()->numberOfRowsInSection(0), 2U);
    EXPECT_EQ(row(*list, 0)->accessibilityText(), "Summer, Various");
    EXPECT_EQ(row(*list, 1)->accessibilityText(), "Winter, Anna") << "the artist stands for the album's";
    EXPECT_EQ(row(*list, 0)->accessoryType(), TableViewCellAccessory::DisclosureIndicator);

    tap(*row(*list, 0));
    advance(1);
    const auto album = std::dynamic_pointer_cast<QueryTableViewController>(stack->topViewController());
    ASSERT_TRUE(album);
    EXPECT_EQ(album->title(), "Summer");
    const auto query = album->queryDataSource()->query();
    EXPECT_EQ(query->groupingType(), MediaGrouping::Album);
    EXPECT_EQ(query->filterPredicates().size(), list->query()->filterPredicates().size() + 1);
    EXPECT_EQ(query->_countOfItems(), 2U);
    EXPECT_EQ(list->query()->_countOfCollections(), 2U) << "the list's own query stays as it is";
}

TEST_F(CompilationsScreenTest, FromTenSectionsOnRowsHaveNoDisclosureIndicator) {
    for (const char letter : std::string("ABCDEFGHIJ")) addAlbum(std::string(1, letter), "Various");
    const auto list = open();
    EXPECT_EQ(list->tableView()->numberOfSections(), 10U);
    EXPECT_EQ(row(*list, 0)->accessoryType(), TableViewCellAccessory::None);
}

}  // namespace
}  // namespace zornic
