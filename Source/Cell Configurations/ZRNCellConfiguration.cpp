#include "Cell Configurations/ZRNCellConfiguration.h"

#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Platform/Media/ArtworkCatalog.h"
#include "Platform/Toolkit/Window.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Views/ZRNTableViewCell.h"

namespace zornic {
namespace {

constexpr Size artworkSize{36, 36};

}  // namespace

TableView::CellFactory ZRNCellConfiguration::tableViewCellClass() const {
    return [](const std::string& identifier) {
        return make<ZRNTableViewCell>(TableViewCellStyle::Subtitle, identifier);
    };
}

TableAppearance ZRNCellConfiguration::tableAppearance() const { return {}; }

void ZRNCellConfiguration::requestArtwork(const std::shared_ptr<ArtworkCatalog>& catalog,
                                          std::int64_t placeholderStyle,
                                          const std::shared_ptr<TableViewCell>& cell,
                                          QueryTableViewController& viewController) const {
    const auto row = std::dynamic_pointer_cast<ZRNTableViewCell>(cell);
    if (!row) return;
    if (!catalog) {
        // A picture on its way to the cell's former row must not arrive here.
        ArtworkCatalog::unbind(row);
        row->setArtworkImage(ZRNAlbumPlaceholderImageWithStyle(placeholderStyle));
        return;
    }
    catalog->setFittingSize(artworkSize);
    const Window* window = viewController.view()->window();
    const auto screen = window ? window->screen() : nullptr;
    catalog->setDestinationScale(screen ? screen->scale() : 1);
    catalog->setCacheIdentifier(reuseIdentifier(), strong<Object>(&viewController));
    const std::weak_ptr<ZRNTableViewCell> weakRow = row;
    catalog->setDestination(row, [weakRow, placeholderStyle](const Image& image) {
        if (const auto destination = weakRow.lock())
            destination->setArtworkImage(image ? image : ZRNAlbumPlaceholderImageWithStyle(placeholderStyle));
    });
    // A reused cell shows its former row's picture until then; the placeholder is no lie.
    if (!catalog->imageAtHand()) row->setArtworkImage(ZRNAlbumPlaceholderImageWithStyle(placeholderStyle));
}

}  // namespace zornic
