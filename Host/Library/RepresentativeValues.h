#pragma once

#include <list>
#include <mutex>
#include <vector>

#include "Host/Library/Readers.h"
#include "Platform/Foundation/EvictingCache.h"
#include "Platform/Foundation/Value.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

/** What rows of collections show of the items that stand for them: as soon as one of a page is asked for, it
   is read for the whole page, and those used last are kept, as of a generation of the library. Any thread. */
class RepresentativeValues {
public:
    /** Items that are going to be asked for, a page at most. */
    void expect(std::vector<std::int64_t> items, std::uint64_t generation);
    /** Empty for an item that nobody expected. */
    zornic::Dictionary values(zornic::PersistentID item, std::uint64_t generation, Readers& readers);

private:
    struct Known {
        std::uint64_t generation;
        zornic::Dictionary values;
    };
    using Page = std::vector<std::int64_t>;
    static constexpr std::size_t itemsKept = 128, pagesExpected = 16;

    /** The page that an item is expected with; an empty one. */
    Page takePage(zornic::PersistentID item, std::uint64_t generation);
    void read(const Page& page, std::uint64_t generation, Readers& readers);

    zornic::EvictingCache<zornic::PersistentID, Known> _items{itemsKept};
    std::mutex _mutex;
    std::uint64_t _generation = 0;
    /** The newest is the first. */
    std::list<Page> _expected;
};

}  // namespace helmo
