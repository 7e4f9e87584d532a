#pragma once

#include <memory>

#include "Host/Library/CountedQuery.h"
#include "Host/Library/Readers.h"
#include "Host/Library/RowList.h"

namespace helmo {

/** The list of all tracks, or collections, in an order whose keys are counted by their first bytes. Those
   counts are all that it holds: rows are read where they are wanted, from the nearer end of the run of keys
   that start alike, so that any place of a million is some hundred rows of an index away and nothing has to
   be read before. */
class CountedRowList final : public RowList {
public:
    CountedRowList(std::shared_ptr<Readers> readers, CountedQuery query);
    std::uint64_t count() const override { return _count; }
    Rows rows(zornic::Range range) const override;
    std::uint64_t indexOf(std::uint32_t row) const override;

private:
    /** Rows whose keys start alike. */
    struct Run {
        std::string start;
        std::uint64_t first;
    };
    using Runs = std::vector<Run>;

    /** The rows that stand right before those of `next`; the last rows of the list when that is the end. */
    Rows rowsBefore(Database& database, Runs::const_iterator next, std::uint64_t distance,
                    std::uint64_t length) const;

    const std::shared_ptr<Readers> _readers;
    const CountedQuery _query;
    Runs _runs;
    std::uint64_t _count = 0;
};

}  // namespace helmo
