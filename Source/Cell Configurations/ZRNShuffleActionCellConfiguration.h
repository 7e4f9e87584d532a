#pragma once

#include "Cell Configurations/ZRNActionCellConfiguration.h"

namespace zornic {

/** The row that plays the whole list shuffled. */
class ZRNShuffleActionCellConfiguration final : public ZRNActionCellConfiguration {
public:
    static const ZRNShuffleActionCellConfiguration& instance();

    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController& viewController,
                                                              const std::shared_ptr<MediaEntity>& entity,
                                                              std::uint64_t index,
                                                              bool animated) const override;
    /** Plays the list's query shuffled on the shared player and shows Now Playing. */
    void performActionForCellWithViewController(const std::shared_ptr<TableViewCell>& cell,
                                                QueryTableViewController& viewController) const override;
};

}  // namespace zornic
