#pragma once

#include <optional>

#include "Platform/LibraryKit/BaseCellConfiguration.h"
#include "Platform/LibraryKit/CompletionQueryDataSource.h"
#include "Platform/Toolkit/TableViewController.h"

namespace zornic {

/** A list of a query's entities: rows from a data source, filled by a configuration, with action rows in a
   section of their own in front. Main thread. */
class QueryTableViewController : public TableViewController, public CompletionQueryDataSourceDelegate {
public:
    QueryTableViewController(std::shared_ptr<CompletionQueryDataSource> dataSource,
                             const BaseCellConfiguration& cellConfiguration);
    void didMake() override;

    const std::shared_ptr<CompletionQueryDataSource>& queryDataSource() const { return _queryDataSource; }
    const BaseCellConfiguration& cellConfiguration() const { return _cellConfiguration; }
    /** Whether a chosen row is let go at once; true by default. */
    bool shouldDeselectImmediately() const { return _shouldDeselectImmediately; }
    void setShouldDeselectImmediately(bool deselects) { _shouldDeselectImmediately = deselects; }

    /** The data source's index of a row; NotFound for action rows and rows that are not there. */
    std::uint64_t dataSourceIndexForIndexPath(const IndexPath& indexPath);
    /** The data source's section of a table section; nullopt for the action section. */
    std::optional<std::uint64_t> dataSourceSectionForTableSection(std::uint64_t section);
    /** Where the row of a data source's index stands; an empty path when there is none. */
    IndexPath indexPathForDataSourceIndex(std::uint64_t index);

    /** Drops what it knows of rows and asks again; what was on view, focused and selected stays so. */
    virtual void reloadData();
    /** Action rows that this kind of list may offer, in order. */
    virtual std::vector<const BaseActionCellConfiguration*> actionCellConfigurationClasses() const {
        return {};
    }
    virtual bool shouldShowActionCellConfiguration(const BaseActionCellConfiguration&) { return true; }
    /** The list's own now-playing button; none: it has none. */
    virtual std::shared_ptr<View> createNowPlayingButton() { return nullptr; }
    /** Whether the list opens below its action rows. */
    virtual bool shouldScrollToFirstDataSourceSectionOnInitialAppearance() { return true; }
    /** Whether the marks of playing rows move. */
    virtual bool isPlayerPlaying() const { return false; }
    /** A setting changed, and rows have forgotten what they knew of it. Lists that it concerns follow it. */
    virtual void defaultsDidChange() {}
    /** Makes the table of the class that the screen takes. */
    virtual std::shared_ptr<TableView> _tableViewClass() { return make<TableView>(); }

    // Drill-down hooks of list kinds
    virtual std::int64_t groupingType() const { return 0; }
    virtual std::int64_t containerItemType() const { return 0; }
    virtual std::string persistentIDProperty() const { return {}; }
    virtual std::string itemPersistentIDProperty() const { return {}; }

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidLayoutSubviews() override;

    std::uint64_t numberOfSectionsInTableView(TableView& tableView) override;
    std::uint64_t tableViewNumberOfRowsInSection(TableView& tableView, std::uint64_t section) override;
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    IndexPath tableViewIndexPathForSubject(TableView& tableView, const TableRowSubject& subject) override;
    std::optional<std::string> tableViewTitleForHeaderInSection(TableView& tableView,
                                                                std::uint64_t section) override;
    std::vector<std::string> sectionIndexTitlesForTableView(TableView& tableView) override;
    std::uint64_t tableViewSectionForSectionIndexTitleAtIndex(TableView& tableView, const std::string& title,
                                                              std::uint64_t index) override;
    /** Does an action row's action and lets the row go; screens pass every selection on to it. */
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;
    void dataSourceDidInvalidate(CompletionQueryDataSource& dataSource) override;

protected:
    std::shared_ptr<TableView> makeTableView() override { return _tableViewClass(); }
    /** The action rows that are shown at present. */
    const std::vector<const BaseActionCellConfiguration*>& shownActions();

private:
    std::shared_ptr<TableViewCell> dequeueCell(const BaseCellConfiguration& configuration);
    void updatePlayingMarks();

    const std::shared_ptr<CompletionQueryDataSource> _queryDataSource;
    const BaseCellConfiguration& _cellConfiguration;
    std::optional<std::vector<const BaseActionCellConfiguration*>> _shownActions;
    std::vector<Observation> _playerObservations;
    bool _shouldDeselectImmediately = true, _openedBelowActions = false;
};

}  // namespace zornic
