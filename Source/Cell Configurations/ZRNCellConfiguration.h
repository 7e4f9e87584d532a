#pragma once

#include "Platform/LibraryKit/BaseCellConfiguration.h"

namespace zornic {

class ArtworkCatalog;

/** The look that all rows of the library share: dark rows of 44 points, artwork at the left. */
class ZRNCellConfiguration : public BaseCellConfiguration {
public:
    /** Cells of `ZRNTableViewCell`. */
    TableView::CellFactory tableViewCellClass() const override;
    TableAppearance tableAppearance() const override;

protected:
    /** Loads a picture into the row's cell at 36 x 36 points; the placeholder of `placeholderStyle` where
     * there is none. */
    void requestArtwork(const std::shared_ptr<ArtworkCatalog>& catalog, std::int64_t placeholderStyle,
                        const std::shared_ptr<TableViewCell>& cell,
                        QueryTableViewController& viewController) const;
    /** Shows a picture that is already there, instead of any that is on its way to the cell. */
    static void showArtwork(const Image& image, const std::shared_ptr<TableViewCell>& cell);
};

}  // namespace zornic
