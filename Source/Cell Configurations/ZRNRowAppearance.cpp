#include "Cell Configurations/ZRNRowAppearance.h"

namespace zornic {

TableAppearance ZRNRowAppearance() {
    TableAppearance look;
    look.tableViewBackgroundColor = _externalSystemExtraDarkGrayColor();
    look.tableViewCellBackgroundColor = _externalSystemExtraDarkGrayColor();
    look.tableViewCellHeight = 44;
    look.tableViewSeparatorColor = _externalSystemDarkGrayColor();
    look.tableViewSeparatorInset.left = 12;
    look.tableViewSeparatorStyle = TableViewSeparatorStyle::SingleLine;
    return look;
}

}  // namespace zornic
