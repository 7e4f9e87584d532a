#include "Platform/LibraryKit/QueryTableViewController.h"

#include "Platform/Media/AVController.h"

namespace zornic {
namespace {

/** Cells of rows whose entity has gone since the list was counted: they show nothing of the row before. */
constexpr const char* emptyRowIdentifier = "QueryTableViewController.emptyRow";

}  // namespace

QueryTableViewController::QueryTableViewController(std::shared_ptr<CompletionQueryDataSource> dataSource,
                                                   const BaseCellConfiguration& cellConfiguration)
    : _queryDataSource(std::move(dataSource)), _cellConfiguration(cellConfiguration) {}

void QueryTableViewController::didMake() {
    TableViewController::didMake();
    _queryDataSource->setDelegate(weak<CompletionQueryDataSourceDelegate>(this));
}

void QueryTableViewController::viewDidLoad() {
    TableViewController::viewDidLoad();
    const auto& table = tableView();
    const TableAppearance look = _cellConfiguration.tableAppearance();
    table->setBackgroundColor(look.tableViewBackgroundColor);
    if (look.tableViewCellHeight != AutomaticDimension) table->setRowHeight(look.tableViewCellHeight);
    table->setSeparatorColor(look.tableViewSeparatorColor);
    table->setSeparatorInset(look.tableViewSeparatorInset);
    table->setSeparatorStyle(look.tableViewSeparatorStyle);
    table->registerCellClass(_cellConfiguration.reuseIdentifier(), _cellConfiguration.tableViewCellClass());
    table->registerCellClass(emptyRowIdentifier, BaseCellConfiguration().tableViewCellClass());
    for (const auto* action : actionCellConfigurationClasses())
        table->registerCellClass(action->reuseIdentifier(), action->tableViewCellClass());

    for (const char* name :
         {AVControllerItemChangedNotification, AVControllerPlaybackStateChangedNotification,
          AVControllerContentsChangedNotification})
        _playerObservations.push_back(NotificationCenter::defaultCenter().observe(
            name, nullptr, [this](const Notification&) { updatePlayingMarks(); }));
}

void QueryTableViewController::viewWillAppear(bool animated) {
    TableViewController::viewWillAppear(animated);
    updatePlayingMarks();
}

void QueryTableViewController::viewDidLayoutSubviews() {
    TableViewController::viewDidLayoutSubviews();
    if (_openedBelowActions || tableView()->bounds().empty() || _queryDataSource->isEmpty()) return;
    _openedBelowActions = true;
    if (!shownActions().empty() && shouldScrollToFirstDataSourceSectionOnInitialAppearance())
        tableView()->scrollToRowAtIndexPath(indexPathForDataSourceIndex(0), true, false);
}

const std::vector<const BaseActionCellConfiguration*>& QueryTableViewController::shownActions() {
    if (!_shownActions) {
        _shownActions.emplace();
        for (const auto* action : actionCellConfigurationClasses())
            if (shouldShowActionCellConfiguration(*action)) _shownActions->push_back(action);
    }
    return *_shownActions;
}

std::optional<std::uint64_t> QueryTableViewController::dataSourceSectionForTableSection(
    std::uint64_t section) {
    const std::uint64_t inFront = shownActions().empty() ? 0 : 1;
    if (section < inFront || section - inFront >= _queryDataSource->numberOfSections()) return std::nullopt;
    return section - inFront;
}

std::uint64_t QueryTableViewController::dataSourceIndexForIndexPath(const IndexPath& indexPath) {
    const auto section = dataSourceSectionForTableSection(indexPath.section());
    if (!section) return NotFound;
    const Range range = _queryDataSource->rangeOfSectionAtIndex(*section);
    return indexPath.row() < range.length ? range.location + indexPath.row() : NotFound;
}

IndexPath QueryTableViewController::indexPathForDataSourceIndex(std::uint64_t index) {
    const std::uint64_t inFront = shownActions().empty() ? 0 : 1;
    for (std::uint64_t section = 0; section < _queryDataSource->numberOfSections(); ++section) {
        const Range range = _queryDataSource->rangeOfSectionAtIndex(section);
        if (range.contains(index)) return IndexPath::forRow(index - range.location, section + inFront);
    }
    return {};
}

std::uint64_t QueryTableViewController::numberOfSectionsInTableView(TableView&) {
    return _queryDataSource->numberOfSections() + (shownActions().empty() ? 0 : 1);
}

std::uint64_t QueryTableViewController::tableViewNumberOfRowsInSection(TableView&, std::uint64_t section) {
    const auto own = dataSourceSectionForTableSection(section);
    return own ? _queryDataSource->rangeOfSectionAtIndex(*own).length : shownActions().size();
}

std::shared_ptr<TableViewCell> QueryTableViewController::dequeueCell(
    const BaseCellConfiguration& configuration) {
    return tableView()->dequeueReusableCellWithIdentifier(configuration.reuseIdentifier());
}

std::shared_ptr<TableViewCell> QueryTableViewController::tableViewCellForRowAtIndexPath(
    TableView&, const IndexPath& indexPath) {
    const std::uint64_t index = dataSourceIndexForIndexPath(indexPath);
    if (index == NotFound) {
        if (dataSourceSectionForTableSection(indexPath.section()) || indexPath.row() >= shownActions().size())
            return nullptr;
        const auto& action = *shownActions()[indexPath.row()];
        const auto cell = dequeueCell(action);
        cell->setBackgroundColor(action.tableAppearance().tableViewCellBackgroundColor);
        action.configureCellWithViewControllerEntityAtIndexAnimated(cell, *this, nullptr, indexPath.row(),
                                                                    false);
        return cell;
    }
    const auto entity = _queryDataSource->entityAtIndex(index);
    const auto cell = entity ? dequeueCell(_cellConfiguration)
                             : tableView()->dequeueReusableCellWithIdentifier(emptyRowIdentifier);
    cell->setBackgroundColor(_cellConfiguration.tableAppearance().tableViewCellBackgroundColor);
    cell->setSubject({entity, index});
    if (!entity) return cell;
    _cellConfiguration.configureCellWithViewControllerEntityAtIndexAnimated(cell, *this, entity, index,
                                                                            false);
    cell->setPlayingMark(_queryDataSource->entityIsNowPlayingAtIndex(index), isPlayerPlaying());
    return cell;
}

IndexPath QueryTableViewController::tableViewIndexPathForSubject(TableView&, const TableRowSubject& subject) {
    const auto entity = std::dynamic_pointer_cast<MediaEntity>(subject.object);
    const std::uint64_t index =
        entity ? indexOfEntityNear(*_queryDataSource->entities(), entity, subject.index) : NotFound;
    return index == NotFound ? IndexPath() : indexPathForDataSourceIndex(index);
}

std::optional<std::string> QueryTableViewController::tableViewTitleForHeaderInSection(TableView&,
                                                                                      std::uint64_t section) {
    const auto own = dataSourceSectionForTableSection(section);
    if (!own || !_queryDataSource->usesSections()) return std::nullopt;
    return _queryDataSource->titleOfSectionAtIndex(*own);
}

std::vector<std::string> QueryTableViewController::sectionIndexTitlesForTableView(TableView&) {
    if (!_queryDataSource->showsIndexBar() || !_queryDataSource->usesSections()) return {};
    return _queryDataSource->sectionInfo().sectionIndexTitles();
}

std::uint64_t QueryTableViewController::tableViewSectionForSectionIndexTitleAtIndex(TableView&,
                                                                                    const std::string&,
                                                                                    std::uint64_t index) {
    const std::uint64_t inFront = shownActions().empty() ? 0 : 1;
    return _queryDataSource->sectionInfo().indexOfSectionForSectionIndexTitleAtIndex(index) + inFront;
}

void QueryTableViewController::tableViewDidSelectRowAtIndexPath(TableView& table,
                                                                const IndexPath& indexPath) {
    const auto self = strong(this);
    const auto& actions = shownActions();
    if (!actions.empty() && indexPath.section() == 0 && indexPath.row() < actions.size())
        actions[indexPath.row()]->performActionForCellWithViewController(
            table.cellForRowAtIndexPath(indexPath), *this);
    if (_shouldDeselectImmediately) table.deselectRowAtIndexPath(indexPath, true);
}

void QueryTableViewController::reloadData() {
    _shownActions.reset();
    if (isViewLoaded()) tableView()->reloadDataKeepingPlace();
}

void QueryTableViewController::dataSourceDidInvalidate(CompletionQueryDataSource&) { reloadData(); }

void QueryTableViewController::updatePlayingMarks() {
    for (const auto& cell : tableView()->visibleCells()) {
        const std::uint64_t index = dataSourceIndexForIndexPath(cell->indexPath());
        if (index != NotFound)
            cell->setPlayingMark(_queryDataSource->entityIsNowPlayingAtIndex(index), isPlayerPlaying());
    }
}

}  // namespace zornic
