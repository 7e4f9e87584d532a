#pragma once

#include "Data Sources/ZRNQueryDataSource.h"

namespace zornic {

/** The artists: one is marked while anything by the same artist plays. Main thread. */
class ZRNArtistsDataSource : public ZRNQueryDataSource {
public:
    using ZRNQueryDataSource::ZRNQueryDataSource;
    /** Always by artist, also where the rows are album artists. */
    bool entityIsNowPlayingAtIndex(std::uint64_t index) override;
};

}  // namespace zornic
