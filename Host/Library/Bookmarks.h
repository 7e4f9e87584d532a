#pragma once

#include <map>
#include <mutex>
#include <optional>

#include "Platform/Foundation/Value.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

/** The bookmarks that were set in this run: what is read is what was set last, stored by then or not. One
   number for each piece that was listened to. Any thread. */
class Bookmarks {
public:
    struct Bookmark {
        /** Seconds; none: the piece begins anew. */
        std::optional<double> time;
    };

    void set(zornic::PersistentID item, Bookmark bookmark);
    /** None when none was set, which leaves it as it is stored. */
    std::optional<Bookmark> of(zornic::PersistentID item) const;
    /** Puts what was set in the place of what was read. */
    void apply(zornic::PersistentID item, zornic::Dictionary& values) const;

private:
    mutable std::mutex _mutex;
    std::map<zornic::PersistentID, Bookmark> _bookmarks;
};

}  // namespace helmo
