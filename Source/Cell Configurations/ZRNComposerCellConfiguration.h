#pragma once

#include "Cell Configurations/ZRNArtistCellConfiguration.h"

namespace zornic {

/** A composer: an artist's row that no setting concerns. */
class ZRNComposerCellConfiguration final : public ZRNArtistCellConfiguration {
public:
    static const ZRNComposerCellConfiguration& instance();

    std::string representativeItemTitleProperty() const override { return MediaItemProperty::Composer; }
    std::string unknownTitleText() const override;

protected:
    Naming naming() const override;
};

}  // namespace zornic
