#pragma once

#include "Platform/Toolkit/TableView.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

/** A screen that is a list; the table is its view and asks it everything. Subclasses override the table's
   questions. Main thread. */
class TableViewController : public ViewController, public TableViewDataSource, public TableViewDelegate {
public:
    TableViewController() = default;

    /** Loads the view. Kept apart from `view`, which a subclass may replace. */
    const std::shared_ptr<TableView>& tableView();
    /** Whether the selection goes when the screen appears, except in a swipe back. */
    bool clearsSelectionOnViewWillAppear() const { return _clearsSelection; }
    void setClearsSelectionOnViewWillAppear(bool clears) { _clearsSelection = clears; }
    /** The kit's kind of filtering of what the list shows; 0: none. */
    void _setFilteredDataType(int type) { _filteredDataType = type; }
    int filteredDataType() const { return _filteredDataType; }

    void loadView() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    std::shared_ptr<View> preferredFocusedItem() override;
    std::uint64_t tableViewNumberOfRowsInSection(TableView&, std::uint64_t) override { return 0; }
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView&, const IndexPath&) override {
        return nullptr;
    }

protected:
    /** The table that `loadView` makes. */
    virtual std::shared_ptr<TableView> makeTableView() { return make<TableView>(); }

private:
    std::shared_ptr<TableView> _tableView;
    bool _clearsSelection = true, _hasAppeared = false;
    int _filteredDataType = 0;
};

}  // namespace zornic
