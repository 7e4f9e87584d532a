#pragma once

#include "Cell Configurations/ZRNCellConfiguration.h"

namespace zornic {

/** A playlist or a folder of playlists: its name, and a mark that it opens. */
class ZRNPlaylistCellConfiguration final : public ZRNCellConfiguration {
public:
    static const ZRNPlaylistCellConfiguration& instance();

    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController& viewController,
                                                              const std::shared_ptr<MediaEntity>& entity,
                                                              std::uint64_t index,
                                                              bool animated) const override;
};

}  // namespace zornic
