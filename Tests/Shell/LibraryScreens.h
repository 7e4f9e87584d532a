#pragma once

#include <thread>

#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Platform/Media/MediaItemCollection.h"
#include "Tests/Support/ScreenFixture.h"
#include "Utilities/ViewControllerZornicAdditions.h"
#include "View Controllers/ZRNBrowserViewController.h"
#include "Views/ZRNTableViewCell.h"

namespace zornic {

/** A browser in the car's window, driven from its tabs downwards. */
class LibraryScreens : protected ScreenFixture {
protected:
    LibraryScreens() { ZRN_registerViewControllerIdentifiers(); }

    void openTab(const char* identifier) {
        browser = make<ZRNBrowserViewController>(nullptr);
        browser->setPlayer(player);
        show(browser);
        for (const auto& tab : browser->tabs()->viewControllers())
            if (tab->identifier() == identifier) browser->tabs()->setSelectedViewController(tab);
        advance(0);
    }
    /** The list on view. */
    QueryTableViewController& list() const {
        const auto top = browser->topViewController();
        const auto shown = top == browser->tabs() ? browser->tabs()->selectedViewController() : top;
        return dynamic_cast<QueryTableViewController&>(*shown);
    }
    TableView& table() const { return *list().tableView(); }
    std::shared_ptr<TableViewCell> cell(std::uint64_t section, std::uint64_t row) const {
        return table().cellForRowAtIndexPath(IndexPath::forRow(row, section));
    }
    template <class Cell = ZRNTableViewCell>
    Cell& cellOf(std::uint64_t section, std::uint64_t row) const {
        return dynamic_cast<Cell&>(*cell(section, row));
    }
    /** Titles of the rows on view, from the top. */
    std::vector<std::string> rows() const {
        std::vector<std::string> titles;
        for (const auto& path : table().indexPathsForVisibleRows())
            titles.push_back(table().cellForRowAtIndexPath(path)->textLabel()->text());
        return titles;
    }
    void choose(std::uint64_t section, std::uint64_t row) {
        tap(*cell(section, row));
        advance(1);
    }
    void groupByAlbumArtist(bool groups) {
        defaults->groupByAlbumArtist = groups;
        std::thread([&] {
            NotificationCenter::defaultCenter().post(ApplicationDefaultsDidChangeNotification, defaults);
        }).join();
        advance(0);
    }
    std::string playing() const { return player->currentItem() ? player->currentItem()->mainTitle() : ""; }

    std::shared_ptr<ZRNBrowserViewController> browser;
};

using Rows = std::vector<std::string>;

}  // namespace zornic
