#include "Host/Library/ReadRowLists.h"

#include <algorithm>

namespace helmo {

std::shared_ptr<const RowList> ReadRowLists::list(const std::shared_ptr<Readers>& readers,
                                                  const std::vector<SqlQuery>& queries,
                                                  std::uint64_t generation) {
    {
        std::lock_guard lock(_mutex);
        if (_generation != generation) _entries.clear();
        _generation = generation;
        const auto found = std::ranges::find_if(_entries, [&](const Entry& entry) {
            return entry.readers.lock() == readers && entry.queries == queries;
        });
        if (found != _entries.end()) {
            _entries.splice(_entries.begin(), _entries, found);
            return found->list;
        }
    }
    const auto list = std::make_shared<const ReadRowList>(*readers, queries);
    std::lock_guard lock(_mutex);
    if (_generation != generation) return list;
    _entries.push_front({readers, queries, list});
    if (_entries.size() > maximumLists) _entries.pop_back();
    return list;
}

}  // namespace helmo
