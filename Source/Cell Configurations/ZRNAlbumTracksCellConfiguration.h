#pragma once

#include "Cell Configurations/ZRNCellConfiguration.h"

namespace zornic {

/** A list that keeps one column for the durations of all its rows. */
class ZRNDurationColumn {
public:
    virtual ~ZRNDurationColumn() = default;
    /** Width of the longest of them, in points. Main thread. */
    virtual double maximumDurationWidth() = 0;
};

/** A track of an album: number, title, duration. */
class ZRNAlbumTracksCellConfiguration final : public ZRNCellConfiguration {
public:
    static const ZRNAlbumTracksCellConfiguration& instance();

    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController& viewController,
                                                              const std::shared_ptr<MediaEntity>& entity,
                                                              std::uint64_t index,
                                                              bool animated) const override;
    const std::vector<std::string>& mediaEntityPropertiesToFetch() const override;
    /** Cells of `_ZRNAlbumTracksCell`. */
    TableView::CellFactory tableViewCellClass() const override;
    /** Room that a duration in seconds takes in a row, in points. */
    Size sizeForDuration(double duration) const;
};

}  // namespace zornic
