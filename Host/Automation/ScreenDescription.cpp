#include "Host/Automation/ScreenDescription.h"

#include <algorithm>
#include <vector>

#include "Platform/Toolkit/Control.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Platform/Toolkit/TabBarController.h"
#include "Platform/Toolkit/TableViewController.h"
#include "View Controllers/ZRN_OLD_TableViewController.h"
#include "Views/ZRNTableViewCell.h"

namespace helmo {

using namespace zornic;
using nlohmann::json;

namespace {

void appendScreens(ViewController& controller, json& stack) {
    stack.push_back({{"class", controller.className()}, {"title", controller.title()}});
    if (auto* navigation = dynamic_cast<NavigationController*>(&controller)) {
        for (const auto& screen : navigation->viewControllers()) appendScreens(*screen, stack);
    } else if (auto* tabs = dynamic_cast<TabBarController*>(&controller)) {
        const auto screen = tabs->selectedViewController();
        const auto& more = tabs->moreNavigationController();
        // One that the bar has no room for stands on the stack of the overflow list.
        const bool isUnderMore = screen && screen->navigationController() == more.get();
        if (screen) appendScreens(isUnderMore ? *more : *screen, stack);
    }
    const auto presented = controller.presentedViewController();
    if (presented && presented->presentingViewController().get() == &controller)
        appendScreens(*presented, stack);
}

json rectangle(const Rect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

/** Only what says something. */
void describeState(const View& view, json& node) {
    if (auto text = view.accessibilityText(); !text.empty()) node["text"] = std::move(text);
    if (auto image = view.accessibilityImage(); !image.empty()) node["image"] = std::move(image);
    if (view.isHidden()) node["hidden"] = true;
    if (view.isFocused()) node["focused"] = true;
    if (const auto* control = dynamic_cast<const Control*>(&view)) {
        if (!control->isEnabled()) node["enabled"] = false;
        if (control->isSelected()) node["selected"] = true;
    } else if (const auto* cell = dynamic_cast<const TableViewCell*>(&view); cell && cell->isSelected()) {
        node["selected"] = true;
    }
}

const char* accessoryName(const TableViewCell& cell) {
    if (cell.accessoryView()) return "view";
    return cell.accessoryType() == TableViewCellAccessory::DisclosureIndicator ? "disclosure" : "none";
}

/** Whether the row shows a picture, and no placeholder. */
bool showsArtwork(TableViewCell& cell) {
    const auto* const row = dynamic_cast<const ZRNTableViewCell*>(&cell);
    const auto art = row ? row->artworkImageView() : ZRN_OLD_TableViewController::albumArtViewOfCell(cell);
    // A mix without any cover has a picture of no height.
    return art && art->image() && !art->image().size().empty() &&
           !art->image().name().starts_with("HelmoAlbumProxyArt");
}

json describedRow(TableViewCell& cell) {
    return {{"section", cell.indexPath().section()},
            {"row", cell.indexPath().row()},
            {"title", cell.titleText()},
            {"detail", cell.detailText()},
            {"accessory", accessoryName(cell)},
            {"artwork", showsArtwork(cell)},
            {"selected", cell.isSelected()},
            {"focused", cell.isFocused()},
            {"playing", cell.showsPlayingMark()}};
}

bool isShown(const View& view) { return !view.isHidden() && view.alpha() > 0; }

std::shared_ptr<TableView> firstList(const std::shared_ptr<View>& view) {
    if (!isShown(*view)) return nullptr;
    if (auto list = std::dynamic_pointer_cast<TableView>(view)) return list;
    for (const auto& subview : view->subviews())
        if (auto list = firstList(subview)) return list;
    return nullptr;
}

void collectShowing(const std::shared_ptr<View>& view, const std::string& text,
                    std::vector<std::shared_ptr<View>>& found) {
    if (!isShown(*view)) return;
    if (view->accessibilityText() == text) found.push_back(view);
    for (const auto& subview : view->subviews()) collectShowing(subview, text, found);
}

Point centerInWindow(const View& view) { return view.convertToWindow(view.bounds()).center(); }

/** Whether a finger on its centre would touch it, or what it is part of. */
bool canBeTouched(Window& window, const View& view) {
    const Point center = centerInWindow(view);
    if (!window.bounds().contains(center)) return false;
    const auto hit = window.hitTest(center);
    return hit && (hit->isDescendantOf(view) || view.isDescendantOf(*hit));
}

}  // namespace

json describedScreens(Window& window) {
    json stack = json::array();
    if (const auto root = window.rootViewController()) appendScreens(*root, stack);
    return stack;
}

json describedTree(const View& view, bool all) {
    json node = {{"class", view.className()}, {"frame", rectangle(view.convertToWindow(view.bounds()))}};
    describeState(view, node);
    json children = json::array();
    for (const auto& subview : view.subviews())
        if (all || isShown(*subview)) children.push_back(describedTree(*subview, all));
    if (!children.empty()) node["children"] = std::move(children);
    return node;
}

json describedRows(TableView& list) {
    json rows = json::array();
    for (const auto& indexPath : list.indexPathsForVisibleRows())
        if (const auto cell = list.cellForRowAtIndexPath(indexPath)) rows.push_back(describedRow(*cell));
    std::uint64_t count = 0;
    for (std::uint64_t section = 0; section < list.numberOfSections(); ++section)
        count += list.numberOfRowsInSection(section);
    json index = json::array();
    if (list.indexBar())
        for (const auto& title : list.indexBar()->titles()) index.push_back(title);
    return {{"rows", rows}, {"sections", list.numberOfSections()}, {"count", count}, {"index", index}};
}

std::shared_ptr<TableView> frontList(Window& window) {
    const auto top = window.topPresentedViewController();
    const auto content = top ? top->contentViewController() : nullptr;
    return content && content->isViewLoaded() ? firstList(content->view()) : nullptr;
}

std::shared_ptr<View> visibleViewShowing(Window& window, const std::string& text) {
    if (text.empty()) return nullptr;
    std::vector<std::shared_ptr<View>> found;
    for (const auto& subview : window.subviews()) collectShowing(subview, text, found);
    std::erase_if(found, [&](const auto& view) { return !canBeTouched(window, *view); });
    const auto first = std::ranges::min_element(found, [](const auto& left, const auto& right) {
        const Rect a = left->convertToWindow(left->bounds()), b = right->convertToWindow(right->bounds());
        return std::pair(a.y(), a.x()) < std::pair(b.y(), b.x());
    });
    return first == found.end() ? nullptr : *first;
}

}  // namespace helmo
