#pragma once

#include "Platform/LibraryKit/BaseCellConfiguration.h"

namespace zornic {

/** The look of rows that do something: that of the library's rows, drawn as rows in the middle of a group. */
class ZRNActionCellConfiguration : public BaseActionCellConfiguration {
public:
    /** Cells of `ZRNActionTableViewCell`. */
    TableView::CellFactory tableViewCellClass() const override;
    TableAppearance tableAppearance() const override;
};

}  // namespace zornic
