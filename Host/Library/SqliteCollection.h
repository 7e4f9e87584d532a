#pragma once

#include <mutex>

#include "Host/Library/QueryCompiler.h"
#include "Host/Library/Readers.h"
#include "Platform/Media/MediaItemCollection.h"

namespace helmo {

/** A collection whose numbers of albums and artists are counted when they are asked for: counting a large
   genre for every row of a list would take too long. Any thread. */
class SqliteCollection final : public zornic::MediaItemCollection {
public:
    SqliteCollection(std::weak_ptr<zornic::MediaLibrary> library, zornic::PersistentID persistentID,
                     zornic::Dictionary values, std::shared_ptr<const QueryCompiler> compiler,
                     std::shared_ptr<Readers> readers, std::int64_t row);
    zornic::Value valueForProperty(std::string_view property) const override;

private:
    zornic::Value counted(const SqlQuery& query, std::optional<zornic::Value>& known) const;

    const std::shared_ptr<const QueryCompiler> _compiler;
    const std::shared_ptr<Readers> _readers;
    const std::int64_t _row;
    mutable std::mutex _mutex;
    mutable std::optional<zornic::Value> _albums;
    mutable std::optional<zornic::Value> _artists;
};

}  // namespace helmo
