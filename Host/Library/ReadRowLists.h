#pragma once

#include <list>
#include <mutex>

#include "Host/Library/ReadRowList.h"

namespace helmo {

/** The lists that were read whole last, for those who ask for the same again while a screen is made: whether
   a playlist is empty, then its songs. Any thread. */
class ReadRowLists {
public:
    /** The list that `queries` read, as of a generation of the library. */
    std::shared_ptr<const RowList> list(const std::shared_ptr<Readers>& readers,
                                        const std::vector<SqlQuery>& queries, std::uint64_t generation);

private:
    static constexpr std::size_t maximumLists = 3;
    struct Entry {
        std::weak_ptr<Readers> readers;
        std::vector<SqlQuery> queries;
        std::shared_ptr<const RowList> list;
    };

    std::mutex _mutex;
    std::uint64_t _generation = 0;
    /** The one used last is the first. */
    std::list<Entry> _entries;
};

}  // namespace helmo
