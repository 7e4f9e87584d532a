#pragma once

#include "View Controllers/ZRNTableViewController.h"

namespace zornic {

/** The list of artists: one leads to all of his albums at once. Main thread. */
class ZRNArtistsViewController : public ZRNTableViewController {
public:
    using ZRNTableViewController::ZRNTableViewController;

    // What a list of artists is made of, asked of the settings afresh, for those who need no list
    static std::int64_t artistsGroupingType() {
        return static_cast<std::int64_t>(MediaGrouping::AlbumsOfArtist);
    }
    static std::string artistsPersistentIDProperty();
    static std::string artistsItemPersistentIDProperty();

    std::int64_t groupingType() const override { return artistsGroupingType(); }
    std::string persistentIDProperty() const override { return artistsPersistentIDProperty(); }
    std::string itemPersistentIDProperty() const override { return artistsItemPersistentIDProperty(); }

    /** Whether it offers to shuffle all of them; false by default. */
    bool allowsActions() const { return _allowsActions; }
    void setAllowsActions(bool allows);
    std::vector<const BaseActionCellConfiguration*> actionCellConfigurationClasses() const override;
    bool shouldShowActionCellConfiguration(const BaseActionCellConfiguration& configuration) override;
    /** Gathers artists anew by the present setting. */
    void defaultsDidChange() override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;

private:
    void showAlbumsOfEntity(const MediaEntity& entity);
    bool _allowsActions = false;
};

}  // namespace zornic
