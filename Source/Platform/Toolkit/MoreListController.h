#pragma once

#include "Platform/Toolkit/TableViewController.h"

namespace zornic {

class TabBarController;

/** The list under the More tab: a row for each screen that got no tab of its own. Main thread. */
class MoreListController : public TableViewController {
public:
    /** `container` is asked for the rows and told of a pick. */
    explicit MoreListController(std::weak_ptr<TabBarController> container)
        : _container(std::move(container)) {}
    void didMake() override;
    /** The container's screens under More have changed. */
    void reload();

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    bool _viewControllerWasSelected() override;
    std::uint64_t tableViewNumberOfRowsInSection(TableView& tableView, std::uint64_t section) override;
    std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                  const IndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) override;

private:
    std::shared_ptr<ViewController> screenAtIndexPath(const IndexPath& indexPath) const;
    /** The list itself needs no bar, what is pushed over it does. */
    void updateNavigationBar(bool animated);

    const std::weak_ptr<TabBarController> _container;
};

}  // namespace zornic
