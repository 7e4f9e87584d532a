#pragma once

#include "Host/Library/Database.h"
#include "Host/Library/Readers.h"
#include "Host/Library/RowList.h"

namespace helmo {

/** A list that is read when it is made: four bytes a row. For what has to be read to be counted. */
class ReadRowList final : public RowList {
public:
    /** `query`: row numbers in order, each with its section or NULL. */
    ReadRowList(Readers& readers, const SqlQuery& query);
    std::uint64_t count() const override { return _numbers.size(); }
    Rows rows(zornic::Range range) const override;
    std::uint64_t indexOf(std::uint32_t row) const override;

private:
    Rows _numbers;
};

}  // namespace helmo
