#include "Cell Configurations/ZRNActionCellConfiguration.h"

#include "Views/ZRNActionTableViewCell.h"

namespace zornic {

TableView::CellFactory ZRNActionCellConfiguration::tableViewCellClass() const {
    return [](const std::string& identifier) {
        return make<ZRNActionTableViewCell>(TableViewCellStyle::Subtitle, identifier);
    };
}

TableAppearance ZRNActionCellConfiguration::tableAppearance() const { return {}; }

}  // namespace zornic
