#pragma once

#include "Platform/Foundation/LocaleServices.h"
#include "View Controllers/ZRN_OLD_TableViewController.h"

namespace zornic {

/** The parts of an audiobook, each with its chapters and with what is left of it; a chosen one plays the book
   from there. Main thread. */
class ZRNAudiobookPartsTableViewController : public ZRN_OLD_TableViewController {
public:
    using ZRN_OLD_TableViewController::ZRN_OLD_TableViewController;
    void didMake() override;
    std::uint64_t tableViewNumberOfRowsInSection(TableView& tableView, std::uint64_t section) override;
    std::shared_ptr<const MediaEntityList> entitiesOfRows() const override { return query()->items(); }
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;
    /** Shows how much is left by now. */
    void viewWillAppear(bool animated) override;

private:
    std::string titleOfPart(const MediaItem& item) const;
    static std::string lengthOfPart(const MediaItem& item);

    const NumberFormatter _formatter{NumberStyle::Decimal};
    /** As it is shown. */
    std::string _numberOfParts;
};

}  // namespace zornic
