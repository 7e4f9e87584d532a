#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Foundation/IndexPath.h"
#include "Platform/Foundation/Object.h"

namespace zornic {

class TableView;
class TableViewCell;
class View;

/** What a row stands for: a list that is asked for again finds its rows by it. */
struct TableRowSubject {
    /** None: nothing that could be found again. */
    std::shared_ptr<Object> object;
    /** Where it was among all that the list shows. */
    std::uint64_t index = 0;
};

/** Pull model of a list: counts once a reload, cells only for rows that come on screen. No answer may block
   or walk all rows. Main thread. */
class TableViewDataSource {
public:
    virtual ~TableViewDataSource() = default;
    virtual std::uint64_t numberOfSectionsInTableView(TableView&) { return 1; }
    virtual std::uint64_t tableViewNumberOfRowsInSection(TableView& tableView, std::uint64_t section) = 0;
    /** A dequeued cell, filled. */
    virtual std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                          const IndexPath& indexPath) = 0;
    /** Nullopt: the section has no header title. */
    virtual std::optional<std::string> tableViewTitleForHeaderInSection(TableView&, std::uint64_t) {
        return std::nullopt;
    }
    /** Titles of the index bar, top to bottom; empty: no bar. */
    virtual std::vector<std::string> sectionIndexTitlesForTableView(TableView&) { return {}; }
    virtual std::uint64_t tableViewSectionForSectionIndexTitleAtIndex(TableView&, const std::string&,
                                                                      std::uint64_t index) {
        return index;
    }
    /** Where what a row stood for stands now; the empty path when it is gone. Asked for the rows that were on
       view, the focused and the selected one, until the place is known. */
    virtual IndexPath tableViewIndexPathForSubject(TableView&, const TableRowSubject&) { return {}; }
};

/** What a list does with a row. Main thread. */
class TableViewDelegate {
public:
    virtual ~TableViewDelegate() = default;
    virtual void tableViewDidSelectRowAtIndexPath(TableView&, const IndexPath&) {}
    /** Points; nullopt: the table's section header height. */
    virtual std::optional<double> tableViewHeightForHeaderInSection(TableView&, std::uint64_t) {
        return std::nullopt;
    }
    /** None: a plain header with the section's title. */
    virtual std::shared_ptr<View> tableViewViewForHeaderInSection(TableView&, std::uint64_t) {
        return nullptr;
    }
    /** Whether the knob may move focus from `indexPath` to `next` (a row or something beside the table). */
    virtual bool tableViewShouldChangeFocusedItemFromRowAtIndexPath(TableView&,
                                                                    const std::shared_ptr<View>& /*next*/,
                                                                    const IndexPath&) {
        return true;
    }
};

}  // namespace zornic
