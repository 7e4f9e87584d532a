#pragma once

#include "Cell Configurations/ZRNAlbumTracksCellConfiguration.h"
#include "View Controllers/ZRNTableViewController.h"

namespace zornic {

/** The tracks of one album, or of all albums of somebody, each under its header: a chosen track plays them
   all from there. Several albums can be shuffled together, each by itself. Main thread. */
class ZRNAlbumsDetailViewController : public ZRNTableViewController, public ZRNDurationColumn {
public:
    using ZRNTableViewController::ZRNTableViewController;
    void didMake() override;
    void viewDidLoad() override;
    void reloadData() override;

    std::vector<const BaseActionCellConfiguration*> actionCellConfigurationClasses() const override;
    bool shouldShowActionCellConfiguration(const BaseActionCellConfiguration& configuration) override;
    /** Computed once. */
    double maximumDurationWidth() override;

    std::optional<double> tableViewHeightForHeaderInSection(TableView& tableView,
                                                            std::uint64_t section) override;
    /** None: an album is headed by its view alone, and by nothing once it has gone from the library. */
    std::optional<std::string> tableViewTitleForHeaderInSection(TableView&, std::uint64_t) override {
        return std::nullopt;
    }
    std::shared_ptr<View> tableViewViewForHeaderInSection(TableView& tableView,
                                                          std::uint64_t section) override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;
    /** The composer, the album or the artist whose tracks these are; empty when there are none. */
    void _updateTitle();

private:
    const char* titleProperty() const;
    void shuffleSection(std::uint64_t section);

    double _maximumDurationWidth = -1;
};

}  // namespace zornic
