#pragma once

#include "Cell Configurations/ZRNCellConfiguration.h"

namespace zornic {

/** An album: its title over its artist, its cover at the left. */
class ZRNAlbumCellConfiguration final : public ZRNCellConfiguration {
public:
    static const ZRNAlbumCellConfiguration& instance();

    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController& viewController,
                                                              const std::shared_ptr<MediaEntity>& entity,
                                                              std::uint64_t index,
                                                              bool animated) const override;
    const std::vector<std::string>& collectionPropertiesToFetch() const override;
};

}  // namespace zornic
