#include "Platform/Toolkit/TableViewController.h"

namespace zornic {

const std::shared_ptr<TableView>& TableViewController::tableView() {
    loadViewIfNeeded();
    return _tableView;
}

void TableViewController::loadView() {
    _tableView = makeTableView();
    _tableView->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleHeight);
    const auto self = strong<TableViewController>(this);
    _tableView->setDataSource(self);
    _tableView->setDelegate(self);
    setView(_tableView);
}

void TableViewController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    if (!_tableView) return;
    if (!std::exchange(_hasAppeared, true)) _tableView->reloadData();
    // A swipe back may yet be let go: the row that led on stays marked until that is decided.
    const auto coordinator = transitionCoordinator();
    if (!_clearsSelection || (coordinator && coordinator->initiallyInteractive())) return;
    for (const auto& indexPath : _tableView->indexPathsForSelectedRows())
        _tableView->deselectRowAtIndexPath(indexPath, animated);
}

void TableViewController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    if (_tableView) _tableView->flashScrollIndicators();
}

std::shared_ptr<View> TableViewController::preferredFocusedItem() {
    if (_tableView) return _tableView;
    return ViewController::preferredFocusedItem();
}

}  // namespace zornic
