#include "Cell Configurations/ZRNComposerCellConfiguration.h"

#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {

const ZRNComposerCellConfiguration& ZRNComposerCellConfiguration::instance() {
    static const ZRNComposerCellConfiguration configuration;
    return configuration;
}

std::string ZRNComposerCellConfiguration::unknownTitleText() const {
    return ZRNLocalizedString("UNKNOWN_COMPOSER");
}

ZRNArtistCellConfiguration::Naming ZRNComposerCellConfiguration::naming() const {
    using namespace MediaCollectionProperty;
    return {ComposerName, ComposerPersistentID, MediaItemProperty::ComposerPersistentID,
            RepresentativeItemPersistentID};
}

}  // namespace zornic
