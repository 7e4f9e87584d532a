#include "Platform/LibraryKit/BaseCellConfiguration.h"

#include "Platform/Foundation/Object.h"

namespace zornic {
namespace {

const std::vector<std::string>& noProperties() {
    static const std::vector<std::string> none;
    return none;
}

}  // namespace

void BaseCellConfiguration::configureCellWithViewControllerEntityAtIndexAnimated(
    const std::shared_ptr<TableViewCell>&, QueryTableViewController&, const std::shared_ptr<MediaEntity>&,
    std::uint64_t, bool) const {}

const std::vector<std::string>& BaseCellConfiguration::mediaEntityPropertiesToFetch() const {
    return noProperties();
}

const std::vector<std::string>& BaseCellConfiguration::collectionPropertiesToFetch() const {
    return noProperties();
}

std::string BaseCellConfiguration::reuseIdentifier() const { return classNameOf(typeid(*this)); }

TableView::CellFactory BaseCellConfiguration::tableViewCellClass() const {
    return [](const std::string& identifier) {
        return make<TableViewCell>(TableViewCellStyle::Subtitle, identifier);
    };
}

std::vector<std::string> propertiesByAdding(std::vector<std::string> properties,
                                            const std::vector<std::string>& base) {
    properties.insert(properties.end(), base.begin(), base.end());
    return properties;
}

}  // namespace zornic
