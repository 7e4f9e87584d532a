#include "Cell Configurations/ZRNActionCellConfiguration.h"

#include "Cell Configurations/ZRNRowAppearance.h"
#include "Views/ZRNActionTableViewCell.h"

namespace zornic {

TableView::CellFactory ZRNActionCellConfiguration::tableViewCellClass() const {
    return [](const std::string& identifier) {
        return make<ZRNActionTableViewCell>(TableViewCellStyle::Subtitle, identifier);
    };
}

TableAppearance ZRNActionCellConfiguration::tableAppearance() const { return ZRNRowAppearance(); }

}  // namespace zornic
