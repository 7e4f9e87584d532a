#include "Platform/Toolkit/MoreListController.h"

#include "Platform/Foundation/PlatformText.h"
#include "Platform/Toolkit/TabBarController.h"

namespace zornic {

namespace {

constexpr const char* rowIdentifier = "MoreListCell";
constexpr double iconSide = 22, textColumn = 57, textMargin = 12;

/** A row with the screen's tab icon, its text in the column of rows with artwork. */
class MoreListCell : public TableViewCell {
public:
    explicit MoreListCell(const std::string& identifier)
        : TableViewCell(TableViewCellStyle::Default, identifier) {}
    void didMake() override {
        TableViewCell::didMake();
        _icon = make<ImageView>();
        _icon->setContentMode(ContentMode::AspectFit);
        contentView()->addSubview(_icon);
        setAccessoryType(TableViewCellAccessory::DisclosureIndicator);
    }
    void setIcon(const Image& image) {
        _image = image;
        setSeparatorInset({0, image ? textColumn : textMargin, 0, 0});
        updateColors();
    }
    void layoutSubviews() override {
        TableViewCell::layoutSubviews();
        const double middle = (textMargin + textColumn - 9) / 2;  // of the artwork's column
        _icon->setFrame({middle - iconSide / 2,
                         roundedToScale((bounds().height() - iconSide) / 2, displayScale()), iconSide,
                         iconSide});
    }

protected:
    void updateColors() override {
        TableViewCell::updateColors();
        if (!_icon) return;
        const auto cutOut = cutOutColor();
        _icon->setImage(_image && cutOut ? _image.flattenedWithColor(*cutOut) : _image);
    }

private:
    std::shared_ptr<ImageView> _icon;
    Image _image;
};

}  // namespace

void MoreListController::didMake() {
    TableViewController::didMake();
    setTitle(platformText("More", "More"));
}

void MoreListController::reload() {
    if (isViewLoaded()) tableView()->reloadData();
}

void MoreListController::viewDidLoad() {
    TableViewController::viewDidLoad();
    tableView()->registerCellClass(
        rowIdentifier, [](const std::string& identifier) { return make<MoreListCell>(identifier); });
}

void MoreListController::viewWillAppear(bool animated) {
    TableViewController::viewWillAppear(animated);
    updateNavigationBar(animated);
}

void MoreListController::viewWillDisappear(bool animated) {
    TableViewController::viewWillDisappear(animated);
    updateNavigationBar(animated);
}

void MoreListController::updateNavigationBar(bool animated) {
    if (auto* const stack = navigationController())
        stack->setNavigationBarHidden(stack->viewControllers().size() < 2, animated);
}

bool MoreListController::_viewControllerWasSelected() {
    return tableView()->_highlightFirstVisibleRowIfAppropriate();
}

std::shared_ptr<ViewController> MoreListController::screenAtIndexPath(const IndexPath& indexPath) const {
    const auto container = _container.lock();
    if (!container || indexPath.row() >= container->overflowViewControllers().size()) return nullptr;
    return container->overflowViewControllers()[indexPath.row()];
}

std::uint64_t MoreListController::tableViewNumberOfRowsInSection(TableView&, std::uint64_t) {
    const auto container = _container.lock();
    return container ? container->overflowViewControllers().size() : 0;
}

std::shared_ptr<TableViewCell> MoreListController::tableViewCellForRowAtIndexPath(
    TableView& tableView, const IndexPath& indexPath) {
    const auto cell = tableView.dequeueReusableCellWithIdentifier(rowIdentifier);
    const auto screen = screenAtIndexPath(indexPath);
    const auto item = screen ? screen->tabBarItem() : std::nullopt;
    std::string title = item && !item->title.empty() ? item->title : screen ? screen->title() : std::string{};
    cell->textLabel()->setText(title);
    if (auto* const row = dynamic_cast<MoreListCell*>(cell.get())) row->setIcon(item ? item->image : Image{});
    return cell;
}

void MoreListController::tableViewDidSelectRowAtIndexPath(TableView&, const IndexPath& indexPath) {
    const auto container = _container.lock();
    const auto screen = screenAtIndexPath(indexPath);
    if (container && screen) container->pickUnderMore(screen);
}

}  // namespace zornic
