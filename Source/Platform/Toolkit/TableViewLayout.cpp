#include <algorithm>

#include "Platform/Toolkit/TableView.h"
#include "Platform/Toolkit/Window.h"

namespace zornic {

namespace {

constexpr const char* plainHeader = "ToolkitPlainHeader";
constexpr double plainHeaderHeight = 28;

/** 1 first, 2 middle, 3 last, 4 only. */
int sectionLocation(std::uint64_t row, std::uint64_t count) {
    if (count == 1) return 4;
    if (row == 0) return 1;
    return row + 1 == count ? 3 : 2;
}

}  // namespace

void TableView::loadSectionsIfNeeded() {
    if (!_sectionsLoaded && !_tiling) rebuild();
}

void TableView::loadSections() {
    const auto source = _dataSource.lock();
    std::vector<Section> sections(source ? source->numberOfSectionsInTableView(*this) : 0);
    for (std::uint64_t section = 0; section < sections.size(); ++section)
        sections[section].rows = source->tableViewNumberOfRowsInSection(*this, section);
    // Whoever answers for headers may ask for the counts.
    _sections = std::move(sections);
    _sectionsLoaded = true;
    for (std::uint64_t section = 0; section < _sections.size(); ++section)
        _sections[section].headerHeight = heightOfHeader(section);
    auto titles = source ? source->sectionIndexTitlesForTableView(*this) : std::vector<std::string>();
    _indexBar->setHidden(titles.empty());
    _indexBar->setTitles(std::move(titles));
    placeSections();
}

double TableView::heightOfHeader(std::uint64_t section) {
    if (!_shouldShowHeadersAndFooters()) return 0;
    if (const auto delegate = _delegate.lock())
        if (const auto height = delegate->tableViewHeightForHeaderInSection(*this, section))
            return std::max(0.0, *height);
    const auto source = _dataSource.lock();
    return source && source->tableViewTitleForHeaderInSection(*this, section) ? plainHeaderHeight : 0;
}

void TableView::placeSections() {
    double top = 0;
    for (auto& section : _sections) {
        section.top = top;
        top += section.headerHeight + static_cast<double>(section.rows) * _rowHeight;
    }
    setContentSize({bounds().width(), top});
}

double TableView::rowWidth() const {
    return std::max(0.0, bounds().width() - (_indexBar->isHidden() ? 0 : IndexBar::width));
}

std::uint64_t TableView::sectionAtOffset(double offset) const {
    const auto after = std::ranges::upper_bound(_sections, offset, {}, &Section::top);
    return after == _sections.begin() ? 0 : static_cast<std::uint64_t>(after - _sections.begin() - 1);
}

IndexPath TableView::rowAtOffset(double offset) const {
    for (auto section = sectionAtOffset(offset); section < _sections.size(); ++section) {
        const auto& place = _sections[section];
        const double row = std::max(0.0, std::floor((offset - place.top - place.headerHeight) / _rowHeight));
        if (row < static_cast<double>(place.rows))
            return IndexPath::forRow(static_cast<std::uint64_t>(row), section);
    }
    return {};
}

IndexPath TableView::rowAfter(const IndexPath& indexPath) const {
    if (indexPath.row() + 1 < _sections[indexPath.section()].rows)
        return IndexPath::forRow(indexPath.row() + 1, indexPath.section());
    for (auto section = indexPath.section() + 1; section < _sections.size(); ++section)
        if (_sections[section].rows > 0) return IndexPath::forRow(0, section);
    return {};
}

Rect TableView::rectForRowAtIndexPath(const IndexPath& indexPath) {
    loadSectionsIfNeeded();
    if (!hasRow(indexPath)) return {};
    const auto& section = _sections[indexPath.section()];
    const double top = section.top + section.headerHeight + static_cast<double>(indexPath.row()) * _rowHeight;
    return {0, top, rowWidth(), _rowHeight};
}

Rect TableView::rectForHeaderInSection(std::uint64_t section) {
    loadSectionsIfNeeded();
    if (section >= _sections.size()) return {};
    return {0, _sections[section].top, rowWidth(), _sections[section].headerHeight};
}

double TableView::alignedOffset(double offset) const {
    if (_sections.empty()) return offset;
    const auto& section = _sections[sectionAtOffset(std::max(0.0, offset))];
    const double firstRow = section.top + section.headerHeight;
    double rest = firstRow + std::round((offset - firstRow) / _rowHeight) * _rowHeight;
    // A header is seen whole or not at all.
    if (offset < firstRow + _rowHeight / 2)
        rest = offset - section.top < firstRow - offset ? section.top : firstRow;
    return std::abs(maximumOffset() - offset) < std::abs(rest - offset) ? maximumOffset() : rest;
}

void TableView::layoutSubviews() {
    ScrollView::layoutSubviews();
    if (_sectionsLoaded)
        placeSections();
    else
        loadSectionsIfNeeded();
    tile();
}

void TableView::contentOffsetDidChange() {
    if (_sectionsLoaded) tile();
}

void TableView::tile() {
    if (_tiling) return;
    loadSectionsIfNeeded();
    const auto self = strong(this);
    placeIndexBar();
    tileRows();
    tileHeaders();
}

void TableView::placeIndexBar() {
    if (_indexBar->isHidden()) return;
    _indexBar->setFrame(
        {bounds().maxX() - IndexBar::width, bounds().y(), IndexBar::width, bounds().height()});
}

void TableView::tileRows() {
    if (_tiling || !_sectionsLoaded) return;
    _tiling = true;
    const Rect shown = bounds();
    for (auto entry = _visible.begin(); entry != _visible.end();) {
        const auto cell = entry->second;
        // The row that the knob is on stays while the list moves.
        const bool keep = hasRow(entry->first) &&
                          (cell->isFocused() || rectForRowAtIndexPath(entry->first).intersects(shown));
        entry = keep ? std::next(entry) : _visible.erase(entry);
        if (!keep) recycle(cell);
    }
    const bool lines = _separatorStyle == TableViewSeparatorStyle::SingleLine;
    for (auto row = shown.empty() ? IndexPath() : rowAtOffset(shown.y());
         row.length() != 0 && rectForRowAtIndexPath(row).y() < shown.maxY(); row = rowAfter(row)) {
        const auto cell = makeCellVisible(row);
        if (!_sectionsLoaded) break;  // the data source asked for a reload
        if (!cell) continue;
        cell->setFrame(rectForRowAtIndexPath(row));
        cell->setSeparator(lines, _separatorColor, _separatorInset);
    }
    _tiling = false;
}

std::shared_ptr<TableViewCell> TableView::makeCellVisible(const IndexPath& indexPath) {
    if (const auto cell = cellForRowAtIndexPath(indexPath)) return cell;
    const auto source = _dataSource.lock();
    const auto cell = source ? source->tableViewCellForRowAtIndexPath(*this, indexPath) : nullptr;
    if (!cell) return nullptr;
    if (cell->tableView() == this)
        _visible.erase(cell->indexPath());  // the same cell for two rows: the later one's
    _visible[indexPath] = cell;
    cell->setPlace(this, indexPath);
    cell->setSectionLocation(sectionLocation(indexPath.row(), _sections[indexPath.section()].rows));
    cell->setSelected(std::ranges::find(_selected, indexPath) != _selected.end(), false);
    cell->setNeedsLayout();
    insertSubview(cell, 0);  // under headers and bars
    return cell;
}

void TableView::tileHeaders() {
    if (_tiling || !_sectionsLoaded) return;
    _tiling = true;
    const Rect shown = bounds();
    const auto focused = holdsFocus() ? window()->focusSystem().focusedItem() : nullptr;
    for (auto entry = _headers.begin(); entry != _headers.end();) {
        const auto header = entry->second;
        const bool keep =
            entry->first < _sections.size() && (rectForHeaderInSection(entry->first).intersects(shown) ||
                                                (focused && focused->isDescendantOf(*header)));
        entry = keep ? std::next(entry) : _headers.erase(entry);
        if (!keep) recycleHeader(header);
    }
    auto section = shown.empty() ? _sections.size() : sectionAtOffset(shown.y());
    for (; section < _sections.size() && _sections[section].top < shown.maxY(); ++section) {
        const Rect place = rectForHeaderInSection(section);
        if (!place.intersects(shown)) continue;
        const auto header = makeHeader(section);
        if (!_sectionsLoaded) break;
        if (header) header->setFrame(place);
    }
    _tiling = false;
}

std::shared_ptr<View> TableView::makeHeader(std::uint64_t section) {
    if (const auto found = _headers.find(section); found != _headers.end()) return found->second;
    std::shared_ptr<View> header;
    if (const auto delegate = _delegate.lock())
        header = delegate->tableViewViewForHeaderInSection(*this, section);
    const auto source = _dataSource.lock();
    const auto title =
        !header && source ? source->tableViewTitleForHeaderInSection(*this, section) : std::nullopt;
    if (title) {
        auto plain = dequeueReusableHeaderFooterViewWithIdentifier(plainHeader);
        if (!plain) plain = make<TableHeaderFooterView>(plainHeader);
        plain->textLabel()->setText(*title);
        header = plain;
    }
    if (!header) return nullptr;
    _headers[section] = header;
    header->setNeedsLayout();
    insertSubview(header, _visible.size() < subviews().size() ? _visible.size() : 0);
    return header;
}

void TableView::scrollToRowAtIndexPath(const IndexPath& indexPath, bool toTop, bool animated) {
    const Rect row = rectForRowAtIndexPath(indexPath);
    if (row.empty()) return;
    const double height = bounds().height();
    double offset = contentOffset().y;
    // A first row comes with its header.
    const double top = indexPath.row() == 0 ? _sections[indexPath.section()].top : row.y();
    if (toTop) {
        offset = top;
    } else {
        const double above = top - _rowHeight;  // one more row beyond it
        offset = std::max(offset, row.maxY() + _rowHeight - height);
        offset = std::min(offset, above);
        offset = std::clamp(offset, std::min(row.y(), row.maxY() - height), row.y());
    }
    if (std::clamp(offset, 0.0, maximumOffset()) != contentOffset().y)
        setContentOffset({0, offset}, animated);
}

bool TableView::isOnIndexBar(Point point) const {
    return !_indexBar->isHidden() && _indexBar->pointInside(point - _indexBar->frame().origin);
}

std::shared_ptr<View> TableView::hitTest(Point point) {
    if (!isHidden() && isUserInteractionEnabled() && isOnIndexBar(point)) return _indexBar;
    return ScrollView::hitTest(point);
}

bool TableView::shouldDragBegin(const Touch& touch) const {
    return !isOnIndexBar(convertFromWindow(touch.location));
}

void TableView::indexBarDidPick(std::size_t index) {
    loadSectionsIfNeeded();
    const auto source = _dataSource.lock();
    const auto& titles = _indexBar->titles();
    if (!source || _sections.empty() || index >= titles.size()) return;
    const auto section =
        source->tableViewSectionForSectionIndexTitleAtIndex(*this, std::string(titles[index]), index);
    if (_sections.empty()) return;
    const auto top = _sections[std::min<std::uint64_t>(section, _sections.size() - 1)].top;
    setContentOffset({0, top}, false);
    scrollingDidEnd();
}

}  // namespace zornic
