#include "Host/Library/ReadRowList.h"

#include <algorithm>

#include "Platform/Foundation/IndexPath.h"

namespace helmo {

ReadRowList::ReadRowList(Readers& readers, const std::vector<SqlQuery>& queries) {
    readers.read(false, [&](Database& database) {
        for (const SqlQuery& query : queries)
            for (auto rows = database.prepare(query); rows.step();) {
                _numbers.push_back(static_cast<std::uint32_t>(rows.integer(0)));
                if (!rows.isNull(1)) addToSections(rows.text(1), {_numbers.size() - 1, 1});
            }
        return true;
    });
    _numbers.shrink_to_fit();
}

RowList::Rows ReadRowList::rows(zornic::Range range) const {
    const auto first = std::min<std::uint64_t>(range.location, count());
    const auto length = std::min<std::uint64_t>(range.length, count() - first);
    const auto begin = _numbers.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(length)};
}

std::uint64_t ReadRowList::indexOf(std::uint32_t row) const {
    const auto found = std::ranges::find(_numbers, row);
    return found == _numbers.end() ? zornic::NotFound : static_cast<std::uint64_t>(found - _numbers.begin());
}

}  // namespace helmo
