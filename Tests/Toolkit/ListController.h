#pragma once

#include "Platform/Toolkit/TableViewController.h"

namespace zornic {

/** A list of rows named "section.row". */
class ListController : public TableViewController {
public:
    std::vector<std::uint64_t> rows{100};
    std::vector<std::string> index;
    std::vector<std::string> headers;
    bool cellsAreMissing = false;
    int counted = 0;
    std::vector<IndexPath> asked, chosen;
    std::function<void(const IndexPath&)> onSelect;
    /** Whether the focus may go from a row to what comes next. */
    std::function<bool(const std::shared_ptr<View>& next, const IndexPath& from)> mayLeave;

    void viewDidLoad() override {
        TableViewController::viewDidLoad();
        tableView()->registerCellClass("row", [](const std::string& id) {
            return make<TableViewCell>(TableViewCellStyle::Subtitle, id);
        });
    }
    std::uint64_t numberOfSectionsInTableView(TableView&) override {
        ++counted;
        return rows.size();
    }
    std::uint64_t tableViewNumberOfRowsInSection(TableView&, std::uint64_t section) override {
        return rows[section];
    }
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& table,
                                                                  const IndexPath& path) override {
        asked.push_back(path);
        if (cellsAreMissing) return nullptr;
        auto cell = table.dequeueReusableCellWithIdentifier("row");
        cell->textLabel()->setText(std::to_string(path.section()) + "." + std::to_string(path.row()));
        return cell;
    }
    std::optional<std::string> tableViewTitleForHeaderInSection(TableView&, std::uint64_t section) override {
        return section < headers.size() ? std::optional(headers[section]) : std::nullopt;
    }
    std::vector<std::string> sectionIndexTitlesForTableView(TableView&) override { return index; }
    void tableViewDidSelectRowAtIndexPath(TableView&, const IndexPath& path) override {
        chosen.push_back(path);
        if (onSelect) onSelect(path);
    }
    bool tableViewShouldChangeFocusedItemFromRowAtIndexPath(TableView&, const std::shared_ptr<View>& next,
                                                            const IndexPath& path) override {
        return !mayLeave || mayLeave(next, path);
    }
};

}  // namespace zornic
