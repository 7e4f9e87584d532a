#pragma once

#include "Cell Configurations/ZRNCellConfiguration.h"

namespace zornic {

/** A song: its title over artist and album, its cover at the left. */
class ZRNSongCellConfiguration final : public ZRNCellConfiguration {
public:
    static const ZRNSongCellConfiguration& instance();

    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController& viewController,
                                                              const std::shared_ptr<MediaEntity>& entity,
                                                              std::uint64_t index,
                                                              bool animated) const override;
    const std::vector<std::string>& mediaEntityPropertiesToFetch() const override;
};

}  // namespace zornic
