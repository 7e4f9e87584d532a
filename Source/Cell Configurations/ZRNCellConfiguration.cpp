#include "Cell Configurations/ZRNCellConfiguration.h"

#include "Cell Configurations/ZRNRowAppearance.h"
#include "Cell Configurations/ZRNRowArtwork.h"
#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Views/ZRNTableViewCell.h"

namespace zornic {

TableView::CellFactory ZRNCellConfiguration::tableViewCellClass() const {
    return [](const std::string& identifier) {
        return make<ZRNTableViewCell>(TableViewCellStyle::Subtitle, identifier);
    };
}

TableAppearance ZRNCellConfiguration::tableAppearance() const { return ZRNRowAppearance(); }

void ZRNCellConfiguration::requestArtwork(const std::shared_ptr<ArtworkCatalog>& catalog,
                                          std::int64_t placeholderStyle,
                                          const std::shared_ptr<TableViewCell>& cell,
                                          QueryTableViewController& viewController) const {
    if (const auto row = std::dynamic_pointer_cast<ZRNTableViewCell>(cell))
        ZRNLoadRowArtwork(catalog, placeholderStyle, reuseIdentifier(), viewController, row);
}

void ZRNCellConfiguration::showArtwork(const Image& image, const std::shared_ptr<TableViewCell>& cell) {
    const auto row = std::dynamic_pointer_cast<ZRNTableViewCell>(cell);
    if (!row) return;
    ArtworkCatalog::unbind(row);
    row->setArtworkImage(image);
}

}  // namespace zornic
