#include "Platform/Toolkit/TableView.h"

namespace zornic {

void TableView::reloadDataKeepingPlace() {
    // What was not shown yet has no place of its own, nor has what is asked for inside an answer.
    if (_sectionsLoaded && !_tiling) keepPlace();
    _sectionsLoaded = false;
    _pendingReloads.clear();
    if (_tiling)
        setNeedsLayout();
    else
        rebuild();
}

void TableView::keepPlace() {
    std::vector<KeptRow> rows;
    for (const auto& [indexPath, cell] : _visible) {
        const Rect row = rectForRowAtIndexPath(indexPath);
        if (row.intersects(bounds())) rows.push_back({indexPath, cell->subject(), row.y() - bounds().y()});
    }
    _kept = std::move(rows);
}

void TableView::returnToKeptPlace() {
    const auto kept = std::exchange(_kept, std::nullopt);
    if (!kept) return;
    selectKeptRow();
    focusKeptRow(*kept);
    scrollToKeptRows(*kept);
}

IndexPath TableView::placeOf(const TableRowSubject& subject) {
    const auto source = _dataSource.lock();
    if (!source || !subject.object) return {};
    const IndexPath place = source->tableViewIndexPathForSubject(*this, subject);
    return hasRow(place) ? place : IndexPath();
}

void TableView::selectKeptRow() {
    if (_selected.empty()) return;
    // A row that stands for nothing, as one of actions, is known by its number alone.
    if (_selectedSubject.object) _selected = {placeOf(_selectedSubject)};
    if (!hasRow(_selected.front())) _selected.clear();
}

void TableView::focusKeptRow(const std::vector<KeptRow>& kept) {
    if (!_lastFocusedSubject.object) return;
    if (const IndexPath place = placeOf(_lastFocusedSubject); place.length() != 0) {
        _lastFocused = place;
        return;
    }
    _lastFocusedSubject = {};
    for (const KeptRow& row : kept) {
        const bool follows = _lastFocused < row.indexPath;
        const IndexPath place = follows ? placeOf(row.subject) : IndexPath();
        if (place.length() == 0) continue;
        _lastFocused = place;
        _lastFocusedSubject = row.subject;
        return;
    }
}

void TableView::scrollToKeptRows(const std::vector<KeptRow>& kept) {
    // What a finger threw goes on, and rests where it would have.
    const bool isAtBeginning = kept.empty() || kept.front().subject.index == 0;
    if (isAtBeginning || isDecelerating()) return;
    for (const KeptRow& row : kept) {
        const IndexPath place = placeOf(row.subject);
        if (place.length() == 0) continue;
        // As if what was above it on view had never been there.
        const double offset = rectForRowAtIndexPath(place).y() - kept.front().distance;
        return setContentOffset({0, offset}, false);
    }
}

}  // namespace zornic
