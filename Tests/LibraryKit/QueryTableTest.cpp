#include <thread>

#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Platform/Media/MediaItem.h"
#include "Tests/Support/ScreenFixture.h"

namespace zornic {
namespace {

/** Writes a row's title, and in the second line what the list says of its place. */
class TitleRows : public BaseCellConfiguration {
public:
    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController&,
                                                              const std::shared_ptr<MediaEntity>& entity,
                                                              std::uint64_t index, bool) const override {
        cell->textLabel()->setText(entity->valueForProperty(MediaItemProperty::Title).asText());
        cell->detailTextLabel()->setText(std::to_string(index));
    }
};

class Action final : public BaseActionCellConfiguration {
public:
    explicit Action(std::string name) : _name(std::move(name)) {}
    std::string reuseIdentifier() const override { return "action"; }
    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController&,
                                                              const std::shared_ptr<MediaEntity>&,
                                                              std::uint64_t, bool) const override {
        cell->textLabel()->setText(_name);
    }
    void performActionForCellWithViewController(const std::shared_ptr<TableViewCell>& cell,
                                                QueryTableViewController&) const override {
        performed.push_back(cell ? cell->textLabel()->text() : "");
    }
    mutable std::vector<std::string> performed;

private:
    const std::string _name;
};

const TitleRows titleRows;

class List final : public QueryTableViewController {
public:
    using QueryTableViewController::QueryTableViewController;
    std::vector<const BaseActionCellConfiguration*> actionCellConfigurationClasses() const override {
        return actions;
    }
    bool shouldShowActionCellConfiguration(const BaseActionCellConfiguration&) override {
        return queryDataSource()->count() > 1;
    }
    std::vector<const BaseActionCellConfiguration*> actions;
};

class QueryTableTest : public testing::Test, protected ScreenFixture {
protected:
    std::shared_ptr<List> listOf(const std::shared_ptr<MediaQuery>& query) {
        const auto list = make<List>(make<CompletionQueryDataSource>(query, EntityType::Items), titleRows);
        list->actions = actions;
        return list;
    }
    /** Texts of the rows on view, from the top. */
    static std::string rows(List& list) {
        std::string texts;
        for (const auto& path : list.tableView()->indexPathsForVisibleRows())
            texts += list.tableView()->cellForRowAtIndexPath(path)->textLabel()->text() + " ";
        return texts;
    }

    std::vector<const BaseActionCellConfiguration*> actions;
};

TEST_F(QueryTableTest, RowsAreOneSnapshotUntilTheLibraryChanges) {
    const auto query = addSongs({"A", "B"});
    const auto list = listOf(query);
    show(list);
    EXPECT_EQ(rows(*list), "A B ");

    addSongs({"C"});
    EXPECT_EQ(list->queryDataSource()->count(), 2U);
    EXPECT_EQ(query->items()->count(), 3U);
    std::thread([&] { library->postDidChange(); }).join();
    EXPECT_EQ(list->queryDataSource()->count(), 2U) << "not on the posting thread";
    advance(0);
    EXPECT_EQ(rows(*list), "A B C ");
    // A list that went meanwhile is not told.
    auto gone = make<CompletionQueryDataSource>(query, EntityType::Items);
    library->postDidChange();
    gone = nullptr;
    advance(0);
}

TEST_F(QueryTableTest, ActionsStandInFrontInASectionOfTheirOwn) {
    const Action shuffle("shuffle"), add("add");
    actions = {&shuffle, &add};
    const auto list = listOf(addSongs({"Anna", "Apple", "Berry"}));
    show(list);
    EXPECT_EQ(list->numberOfSectionsInTableView(*list->tableView()), 3U);
    EXPECT_EQ(rows(*list), "shuffle add Anna Apple Berry ");
    EXPECT_EQ(list->dataSourceIndexForIndexPath({0, 1}), NotFound);
    EXPECT_EQ(list->dataSourceIndexForIndexPath({1, 1}), 1U);
    EXPECT_EQ(list->dataSourceIndexForIndexPath({2, 0}), 2U);
    EXPECT_EQ(list->dataSourceIndexForIndexPath({2, 1}), NotFound);
    EXPECT_EQ(list->dataSourceIndexForIndexPath({3, 0}), NotFound);
    EXPECT_EQ(list->indexPathForDataSourceIndex(2), (IndexPath{2, 0}));
    EXPECT_EQ(list->indexPathForDataSourceIndex(3), IndexPath());
    EXPECT_EQ(list->tableViewTitleForHeaderInSection(*list->tableView(), 0), std::nullopt);
    EXPECT_EQ(list->tableViewTitleForHeaderInSection(*list->tableView(), 2), "B");

    tap(*list->tableView()->cellForRowAtIndexPath({0, 1}));
    tap(*list->tableView()->cellForRowAtIndexPath({1, 1}));
    EXPECT_EQ(add.performed, std::vector<std::string>{"add"});
    EXPECT_TRUE(shuffle.performed.empty());
    EXPECT_TRUE(list->tableView()->indexPathsForSelectedRows().empty()) << "let go at once";

    for (const char* gone : {"Apple", "Berry"})
        for (std::uint64_t i = 0; i < 3; ++i)
            if (const auto item = list->queryDataSource()->entityAtIndex(i);
                item->valueForProperty(MediaItemProperty::Title).asText() == gone)
                library->removeItem(item->persistentID());
    library->postDidChange();
    advance(0);
    EXPECT_EQ(rows(*list), "Anna ");
    EXPECT_EQ(list->dataSourceIndexForIndexPath({0, 0}), 0U);
}

TEST_F(QueryTableTest, WhatComesAndGoesLeavesTheDriverWhereHeWas) {
    setUIMode(2);
    const Action shuffle("shuffle");
    actions = {&shuffle};
    std::vector<std::string> titles;
    for (int song = 100; song < 160; ++song) titles.push_back("S" + std::to_string(song));
    const auto list = listOf(addSongs(titles));
    show(list);
    const auto& table = list->tableView();
    const auto titleAt = [&](const IndexPath& path) {
        const auto entity = list->queryDataSource()->entityAtIndex(list->dataSourceIndexForIndexPath(path));
        return entity ? entity->valueForProperty(MediaItemProperty::Title).asText() : "none";
    };
    const auto remove = [&](const std::string& title) {
        for (std::uint64_t at = 0; at < list->queryDataSource()->count(); ++at)
            if (const auto song = list->queryDataSource()->entityAtIndex(at);
                song && song->valueForProperty(MediaItemProperty::Title).asText() == title)
                library->removeItem(song->persistentID());
    };
    const auto change = [&] {
        library->postDidChange();
        advance(0);
    };
    /** Selected, focused and first row on view, and how much of that is hidden. */
    const auto place = [&] {
        const auto selected = table->indexPathsForSelectedRows();
        const auto* focused = dynamic_cast<TableViewCell*>(window->focusSystem().focusedItem().get());
        const auto first = table->indexPathsForVisibleRows().front();
        const double hidden = table->contentOffset().y - table->rectForRowAtIndexPath(first).y();
        return (selected.empty() ? "none" : titleAt(selected.front())) + " " +
               (focused ? titleAt(focused->indexPath()) : "none") + " " + titleAt(first) + " " +
               std::to_string(static_cast<int>(hidden));
    };
    table->scrollToRowAtIndexPath(list->indexPathForDataSourceIndex(20), true, false);
    table->setContentOffset(table->contentOffset() + Point{0, 10}, false);
    table->selectRowAtIndexPath(list->indexPathForDataSourceIndex(23), false);
    window->focusSystem().focus(table->cellForRowAtIndexPath(list->indexPathForDataSourceIndex(24)));
    ASSERT_EQ(place(), "S123 S124 S120 10");

    addSongs({"A new section", "S101b", "S121b"});
    remove("S110");
    change();
    EXPECT_EQ(place(), "S123 S124 S120 10");
    remove("S120");
    change();
    EXPECT_EQ(place(), "S123 S124 S121 10") << "what follows takes its place";
    remove("S123");
    remove("S124");
    change();
    EXPECT_EQ(place(), "none S125 S121 10");
    // All that was on view goes at once, and then the rest.
    for (int song = 121; song < 140; ++song) remove("S" + std::to_string(song));
    remove("S121b");
    change();
    EXPECT_EQ(table->indexPathsForVisibleRows().size(), table->visibleCells().size());
    EXPECT_FALSE(rows(*list).empty());

    table->setContentOffset({}, false);
    table->_highlightFirstVisibleRowIfAppropriate();
    addSongs({"A first one"});
    change();
    EXPECT_EQ(table->contentOffset().y, 0) << "a list at its beginning shows what comes there";
    EXPECT_TRUE(rows(*list).starts_with("shuffle A first one ")) << rows(*list);
}

TEST_F(QueryTableTest, ALongListCostsWhatIsOnView) {
    std::vector<std::string> titles;
    for (int song = 0; song < 1'000; ++song)
        titles.push_back(static_cast<char>('A' + song / 40) + std::to_string(1'000 + song));
    const auto list = listOf(addSongs(titles));
    const auto cellsBefore = TableView::cellsMade();
    show(list);
    const auto onView = list->tableView()->visibleCells().size();
    ASSERT_GT(onView, 5U);
    const auto made = [&] { return static_cast<std::size_t>(library->entitiesMade.exchange(0)); };
    EXPECT_LE(made(), onView + 4);

    for (const std::uint64_t index : {999, 500, 0, 723}) {
        list->tableView()->scrollToRowAtIndexPath(list->indexPathForDataSourceIndex(index), true, false);
        advance(0);
        EXPECT_NE(rows(*list).find(titles[index]), std::string::npos);
        EXPECT_LE(made(), onView + 4);
    }
    EXPECT_LE(TableView::cellsMade() - cellsBefore, onView + 4);
    made();
    list->queryDataSource()->invalidate();
    advance(0);
    EXPECT_LE(made(), onView + 4) << "a reload asks for what is on view";
}

TEST_F(QueryTableTest, ASongThatIsGoneLeavesAnEmptyRow) {
    const auto list = listOf(addSongs({"A1", "A2", "A3"}));
    show(list);
    library->goneRow = 2;
    list->reloadData();  // rows are filled into the cells of a moment ago
    const auto empty = list->tableView()->cellForRowAtIndexPath({0, 2});
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->textLabel()->text(), "");
    EXPECT_EQ(empty->detailTextLabel()->text(), "");
    tap(*empty);
}

TEST_F(QueryTableTest, AScreenIsMadeAfreshFromItsRecord) {
    const auto query = addSongs({"A", "B"});
    ScreenRegistry registry;
    ScreenAttributes attributes;
    attributes.configurationClass = &titleRows;
    bool refuses = false;
    attributes.dataSourceClass = [&](std::shared_ptr<MediaQuery> wanted, EntityType type) {
        return refuses ? nullptr : make<CompletionQueryDataSource>(std::move(wanted), type);
    };
    attributes.viewControllerClass = [](auto source, const auto& configuration) {
        return make<List>(std::move(source), configuration);
    };
    attributes.entityType = EntityType::Collections;
    registry.registerIdentifierWithAttributesDefaultQueryCreationHandler("songs", attributes,
                                                                         [&] { return query->copy(); });
    registry.registerIdentifierWithAttributesDefaultQueryCreationHandler("detail", attributes, nullptr);

    const auto first = registry.viewControllerForIdentifier("songs"),
               second = registry.viewControllerForIdentifier("songs");
    EXPECT_NE(first, second);
    EXPECT_NE(first->queryDataSource()->query(), second->queryDataSource()->query());
    EXPECT_EQ(first->identifier(), "songs");
    EXPECT_EQ(first->queryDataSource()->entityType(), EntityType::Collections);
    EXPECT_EQ(&first->cellConfiguration(), &titleRows);
    EXPECT_EQ(registry.viewControllerForIdentifierQuery("detail", query)->queryDataSource()->query(), query);
    EXPECT_EQ(registry.viewControllerForIdentifier("detail"), nullptr) << "neither a query nor who makes one";
    EXPECT_EQ(registry.viewControllerForIdentifier("Songs"), nullptr);
    refuses = true;
    EXPECT_EQ(registry.viewControllerForIdentifier("songs"), nullptr);
}

}  // namespace
}  // namespace zornic
