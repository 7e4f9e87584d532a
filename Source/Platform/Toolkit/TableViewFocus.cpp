#include <algorithm>

#include "Platform/Toolkit/TableView.h"
#include "Platform/Toolkit/Window.h"

namespace zornic {

namespace {

std::shared_ptr<View> firstFocusable(const std::shared_ptr<View>& view) {
    if (view->isHidden()) return nullptr;
    if (view->canBecomeFocused()) return view;
    for (const auto& subview : view->subviews())
        if (auto found = firstFocusable(subview)) return found;
    return nullptr;
}

TableViewCell* cellAround(View& view, const TableView& table) {
    for (View* at = &view; at; at = at->superview())
        if (auto* cell = dynamic_cast<TableViewCell*>(at); cell && cell->tableView() == &table) return cell;
    return nullptr;
}

}  // namespace

bool TableView::holdsFocus() const {
    const auto focused = window() ? window()->focusSystem().focusedItem() : nullptr;
    return focused && focused.get() != this && focused->isDescendantOf(*this);
}

void TableView::rowDidBecomeFocused(const IndexPath& indexPath) {
    _lastFocused = indexPath;
    const auto cell = cellForRowAtIndexPath(indexPath);
    _lastFocusedSubject = cell ? cell->subject() : TableRowSubject();
}

void TableView::restoreFocus() {
    if (!window() || !window()->focusSystem().isEnabled()) return;
    if (const auto item = focusItemAfterReload())
        window()->focusSystem().focus(item);
    else
        window()->focusSystem().update();
}

void TableView::scrollingDidEnd() {
    if (!holdsFocus()) return;
    const auto focused = window()->focusSystem().focusedItem();
    if (!focused->convertToWindow(focused->bounds()).intersects(convertToWindow(bounds())))
        _highlightFirstVisibleRowIfAppropriate();
}

std::shared_ptr<TableViewCell> TableView::bringOnView(const IndexPath& indexPath) {
    if (!hasRow(indexPath)) return nullptr;
    scrollToRowAtIndexPath(indexPath, false, false);
    tile();
    return cellForRowAtIndexPath(indexPath);
}

std::shared_ptr<TableViewCell> TableView::firstRowOnView(int direction) {
    const auto rows = indexPathsForVisibleRows();
    std::shared_ptr<TableViewCell> partly;
    for (std::size_t at = 0; at < rows.size(); ++at) {
        const auto cell = cellForRowAtIndexPath(rows[direction < 0 ? rows.size() - 1 - at : at]);
        if (bounds().contains(cell->frame())) return cell;
        if (!partly) partly = cell;
    }
    return partly;
}

bool TableView::_highlightFirstVisibleRowIfAppropriate() {
    if (!window() || !window()->focusSystem().isEnabled()) return false;
    const auto cell = firstRowOnView(1);
    if (!cell) return false;
    window()->focusSystem().focus(cell);
    return true;
}

std::shared_ptr<View> TableView::focusItemOnEntry(int direction) {
    if (_tiling) return nullptr;
    loadSectionsIfNeeded();
    if (const auto last = bringOnView(_lastFocused)) return last;
    return firstRowOnView(direction);
}

std::shared_ptr<View> TableView::focusItemInHeader(std::uint64_t section) {
    const Rect place = rectForHeaderInSection(section);
    if (place.empty()) return nullptr;
    const double lowest = place.maxY() + _rowHeight - bounds().height();
    const double highest = std::max(0.0, place.y() - _rowHeight);
    const double offset = contentOffset().y;
    if (offset < lowest || offset > highest)
        setContentOffset({0, std::min(std::max(offset, lowest), highest)}, false);
    tile();
    const auto header = _headers.find(section);
    return header != _headers.end() ? firstFocusable(header->second) : nullptr;
}

std::shared_ptr<View> TableView::focusItemNextTo(View& focused, int direction) {
    if (_tiling || direction == 0) return nullptr;
    loadSectionsIfNeeded();
    // Slot 0 of a section is what its header offers, its rows follow.
    std::uint64_t section = 0, slot = 0;
    if (const auto* cell = cellAround(focused, *this)) {
        section = cell->indexPath().section();
        slot = cell->indexPath().row() + 1;
    } else {
        const auto header = std::ranges::find_if(
            _headers, [&](const auto& entry) { return focused.isDescendantOf(*entry.second); });
        if (header == _headers.end()) return nullptr;
        section = header->first;
    }
    while (section < _sections.size()) {
        if (direction > 0 && ++slot > _sections[section].rows) {
            if (++section >= _sections.size()) return nullptr;
            slot = 0;
        } else if (direction < 0 && slot-- == 0) {
            if (section == 0) return nullptr;
            slot = _sections[--section].rows;
        }
        if (slot > 0) return bringOnView(IndexPath::forRow(slot - 1, section));
        if (const auto item = focusItemInHeader(section)) return item;
    }
    return nullptr;
}

bool TableView::shouldChangeFocus(View& focused, const std::shared_ptr<View>& next) {
    const auto* cell = cellAround(focused, *this);
    const auto delegate = _delegate.lock();
    if (!cell || !delegate) return true;
    const IndexPath indexPath = cell->indexPath();
    return delegate->tableViewShouldChangeFocusedItemFromRowAtIndexPath(*this, next, indexPath);
}

std::shared_ptr<View> TableView::focusItemAfterReload() {
    if (_tiling) return nullptr;
    loadSectionsIfNeeded();
    if (_sections.empty()) return nullptr;
    if (_lastFocused.length() != 2) return firstRowOnView(1);
    const auto section = std::min<std::uint64_t>(_lastFocused.section(), _sections.size() - 1);
    if (const auto rows = _sections[section].rows; rows > 0) {
        const auto row = section < _lastFocused.section() ? rows - 1 : std::min(_lastFocused.row(), rows - 1);
        return bringOnView(IndexPath::forRow(row, section));
    }
    // The section ran empty: the next row, or the last one of all.
    for (auto at = section + 1; at < _sections.size(); ++at)
        if (_sections[at].rows > 0) return bringOnView(IndexPath::forRow(0, at));
    for (auto at = section; at-- > 0;)
        if (_sections[at].rows > 0) return bringOnView(IndexPath::forRow(_sections[at].rows - 1, at));
    return nullptr;
}

}  // namespace zornic
