#include "Platform/Toolkit/TableView.h"

#include <algorithm>

namespace zornic {

TableView::TableView(const Rect& frame) : ScrollView(frame) {}

TableView::~TableView() {
    for (const auto& [indexPath, cell] : _visible) cell->setPlace(nullptr, {});
}

void TableView::didMake() {
    ScrollView::didMake();
    setBackgroundColor(_externalSystemExtraDarkGrayColor());
    _indexBar = make<IndexBar>();
    _indexBar->setHidden(true);
    _indexBar->onPick = [weakSelf = weak(this)](std::size_t index) {
        if (const auto self = weakSelf.lock()) self->indexBarDidPick(index);
    };
    addSubview(_indexBar);
}

void TableView::setDataSource(std::weak_ptr<TableViewDataSource> dataSource) {
    _dataSource = std::move(dataSource);
    _sectionsLoaded = false;
    setNeedsLayout();
}

void TableView::setDelegate(std::weak_ptr<TableViewDelegate> delegate) {
    _delegate = std::move(delegate);
    _sectionsLoaded = false;
    setNeedsLayout();
}

void TableView::setRowHeight(double height) {
    const double used = std::max(1.0, height);
    if (used == _rowHeight) return;
    _rowHeight = used;
    if (_sectionsLoaded) placeSections();
    setNeedsLayout();
}

void TableView::setSeparatorInset(const EdgeInsets& inset) {
    _separatorInset = inset;
    setNeedsLayout();
}

void TableView::setSeparatorColor(Color color) {
    _separatorColor = color;
    setNeedsLayout();
}

void TableView::setSeparatorStyle(TableViewSeparatorStyle style) {
    _separatorStyle = style;
    setNeedsLayout();
}

void TableView::registerCellClass(const std::string& reuseIdentifier, CellFactory factory) {
    _cellClasses[reuseIdentifier] = std::move(factory);
    _idleCells.erase(reuseIdentifier);
}

void TableView::registerHeaderClass(const std::string& reuseIdentifier, HeaderFactory factory) {
    _headerClasses[reuseIdentifier] = std::move(factory);
    _idleHeaders.erase(reuseIdentifier);
}

std::shared_ptr<TableViewCell> TableView::dequeueReusableCellWithIdentifier(
    const std::string& reuseIdentifier) {
    if (auto& idle = _idleCells[reuseIdentifier]; !idle.empty()) {
        const auto cell = std::move(idle.back());
        idle.pop_back();
        cell->prepareForReuse();
        return cell;
    }
    const auto factory = _cellClasses.find(reuseIdentifier);
    return factory != _cellClasses.end() ? factory->second(reuseIdentifier) : nullptr;
}

std::shared_ptr<TableHeaderFooterView> TableView::dequeueReusableHeaderFooterViewWithIdentifier(
    const std::string& reuseIdentifier) {
    if (auto& idle = _idleHeaders[reuseIdentifier]; !idle.empty()) {
        const auto header = std::move(idle.back());
        idle.pop_back();
        header->prepareForReuse();
        return header;
    }
    const auto factory = _headerClasses.find(reuseIdentifier);
    return factory != _headerClasses.end() ? factory->second(reuseIdentifier) : nullptr;
}

std::uint64_t TableView::cellsMade() { return TableViewCell::made(); }

void TableView::reloadData() {
    _sectionsLoaded = false;
    _selected.clear();
    _kept.reset();
    _pendingReloads.clear();
    // From inside an answer of the data source: once that row is done.
    if (_tiling)
        setNeedsLayout();
    else
        rebuild();
}

void TableView::rebuild() {
    const auto self = strong(this);
    const bool hadFocus = holdsFocus();
    _tiling = true;
    for (const auto& [indexPath, cell] : std::exchange(_visible, {})) recycle(cell);
    for (const auto& [section, header] : std::exchange(_headers, {})) recycleHeader(header);
    loadSections();
    _tiling = false;
    returnToKeptPlace();
    std::erase_if(_selected, [this](const IndexPath& indexPath) { return !hasRow(indexPath); });
    tile();
    if (hadFocus) restoreFocus();
}

void TableView::beginUpdates() { ++_updateDepth; }

void TableView::reloadRowsAtIndexPaths(const std::vector<IndexPath>& indexPaths) {
    if (_updateDepth > 0)
        _pendingReloads.insert(_pendingReloads.end(), indexPaths.begin(), indexPaths.end());
    else
        reloadVisibleRows(indexPaths);
}

void TableView::endUpdates() {
    if (_updateDepth == 0 || --_updateDepth > 0) return;
    reloadVisibleRows(std::exchange(_pendingReloads, {}));
}

void TableView::reloadVisibleRows(const std::vector<IndexPath>& indexPaths) {
    const auto self = strong(this);
    if (_tiling || !_sectionsLoaded) return;
    std::vector<IndexPath> rows;
    for (const auto& indexPath : indexPaths)
        if (_visible.contains(indexPath)) rows.push_back(indexPath);
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    if (rows.empty()) return;
    const bool hadFocus = holdsFocus();
    for (const auto& indexPath : rows)
        if (auto node = _visible.extract(indexPath)) recycle(node.mapped());
    tileRows();
    if (hadFocus && std::ranges::binary_search(rows, _lastFocused)) restoreFocus();
}

void TableView::recycle(const std::shared_ptr<TableViewCell>& cell) {
    cell->setPlace(nullptr, {});
    cell->removeFromSuperview();
    if (_cellClasses.contains(cell->reuseIdentifier())) _idleCells[cell->reuseIdentifier()].push_back(cell);
}

void TableView::recycleHeader(const std::shared_ptr<View>& header) {
    header->removeFromSuperview();
    const auto reusable = std::dynamic_pointer_cast<TableHeaderFooterView>(header);
    if (reusable) _idleHeaders[reusable->reuseIdentifier()].push_back(reusable);
}

std::uint64_t TableView::numberOfSections() {
    loadSectionsIfNeeded();
    return _sections.size();
}

std::uint64_t TableView::numberOfRowsInSection(std::uint64_t section) {
    loadSectionsIfNeeded();
    return section < _sections.size() ? _sections[section].rows : 0;
}

bool TableView::hasRow(const IndexPath& indexPath) const {
    return indexPath.length() == 2 && indexPath.section() < _sections.size() &&
           indexPath.row() < _sections[indexPath.section()].rows;
}

std::vector<IndexPath> TableView::indexPathsForVisibleRows() {
    tile();
    std::vector<IndexPath> rows;
    for (const auto& [indexPath, cell] : _visible)
        if (cell->frame().intersects(bounds())) rows.push_back(indexPath);
    return rows;
}

std::vector<std::shared_ptr<TableViewCell>> TableView::visibleCells() {
    std::vector<std::shared_ptr<TableViewCell>> cells;
    for (const auto& indexPath : indexPathsForVisibleRows()) cells.push_back(_visible.at(indexPath));
    return cells;
}

std::shared_ptr<TableViewCell> TableView::cellForRowAtIndexPath(const IndexPath& indexPath) const {
    const auto found = _visible.find(indexPath);
    return found != _visible.end() ? found->second : nullptr;
}

void TableView::setSelectedRow(const IndexPath& indexPath) {
    for (const auto& other : std::exchange(_selected, {indexPath}))
        if (const auto cell = cellForRowAtIndexPath(other); cell && other != indexPath)
            cell->setSelected(false, false);
    const auto cell = cellForRowAtIndexPath(indexPath);
    _selectedSubject = cell ? cell->subject() : TableRowSubject();
    if (cell) cell->setSelected(true, false);
}

void TableView::selectRowAtIndexPath(const IndexPath& indexPath, bool) {
    loadSectionsIfNeeded();
    if (hasRow(indexPath)) setSelectedRow(indexPath);
}

void TableView::deselectRowAtIndexPath(const IndexPath& indexPath, bool animated) {
    if (std::erase(_selected, IndexPath(indexPath)) == 0) return;
    if (const auto cell = cellForRowAtIndexPath(indexPath)) cell->setSelected(false, animated);
}

void TableView::rowWasActivated(const IndexPath& activated) {
    const auto self = strong(this);
    const IndexPath indexPath =
        activated;  // the cell that it belongs to may show another row before this ends
    if (!hasRow(indexPath)) return;
    setSelectedRow(indexPath);
    if (const auto delegate = _delegate.lock()) delegate->tableViewDidSelectRowAtIndexPath(*this, indexPath);
}

}  // namespace zornic
