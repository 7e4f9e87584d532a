#pragma once

#include "Host/Library/Database.h"
#include "Host/Library/Readers.h"
#include "Host/Library/RowList.h"

namespace helmo {

/** A list that is read when it is made: four bytes a row. For what has to be read to be counted. */
class ReadRowList final : public RowList {
public:
    /** `queries`: row numbers in order, each with its section or NULL; one behind the other. */
    ReadRowList(Readers& readers, const std::vector<SqlQuery>& queries);
    std::uint64_t count() const override { return _numbers.size(); }
    Rows rows(zornic::Range range) const override;
    std::uint64_t indexOf(std::uint32_t row) const override;

private:
    Rows _numbers;
};

}  // namespace helmo
