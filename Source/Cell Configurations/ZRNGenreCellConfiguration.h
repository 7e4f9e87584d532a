#pragma once

#include "Cell Configurations/ZRNCellConfiguration.h"

namespace zornic {

/** A genre: its name, and the host's picture for such music or a cover at the left. */
class ZRNGenreCellConfiguration final : public ZRNCellConfiguration {
public:
    static const ZRNGenreCellConfiguration& instance();

    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController& viewController,
                                                              const std::shared_ptr<MediaEntity>& entity,
                                                              std::uint64_t index,
                                                              bool animated) const override;
    const std::vector<std::string>& collectionPropertiesToFetch() const override;
};

}  // namespace zornic
