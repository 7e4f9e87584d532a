#pragma once

#include <optional>

#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace zornic {

/** A list of collections with headed sections and an index bar where there were ten sections or more, and
   with action rows in front in subclasses. Main thread. */
class ZRNSectionedTableViewController : public ZRN_OLD_TableViewController {
public:
    using ZRN_OLD_TableViewController::ZRN_OLD_TableViewController;
    void didMake() override;

    bool isSectioning() const { return _offsetOfSection.has_value(); }
    virtual std::uint64_t countOfActions() const { return 0; }
    /** Index into the flat list: actions first, then the entities. */
    std::uint64_t rowAtIndexPath(const IndexPath& indexPath) const;
    std::uint64_t indexOfRow(const IndexPath& indexPath) const override { return rowAtIndexPath(indexPath); }
    IndexPath indexPathOfIndex(std::uint64_t index) const override;

    std::uint64_t numberOfSectionsInTableView(TableView& tableView) override;
    std::uint64_t tableViewNumberOfRowsInSection(TableView& tableView, std::uint64_t section) override;
    std::optional<std::string> tableViewTitleForHeaderInSection(TableView& tableView,
                                                                std::uint64_t section) override;
    std::vector<std::string> sectionIndexTitlesForTableView(TableView& tableView) override;
    /** With action rows in front the answer is one section early: the action section is not added back. */
    std::uint64_t tableViewSectionForSectionIndexTitleAtIndex(TableView& tableView, const std::string& title,
                                                              std::uint64_t index) override;

private:
    /** The collection section of a table section; nullopt for the action section. */
    std::optional<std::uint64_t> collectionSection(std::uint64_t section) const;

    /** Index of each section's first row in the flat list. Whether there are sections is decided when the
       list is made. */
    std::optional<std::vector<std::uint64_t>> _offsetOfSection;
};

}  // namespace zornic
