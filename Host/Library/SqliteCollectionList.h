#pragma once

#include <unordered_map>

#include "Host/Library/PagedEntityList.h"
#include "Host/Library/QueryCompiler.h"
#include "Host/Library/Readers.h"
#include "Host/Library/RepresentativeValues.h"
#include "Platform/Media/MediaLibrary.h"

namespace helmo {

/** Collections, or playlists, by index. */
class SqliteCollectionList final : public PagedEntityList {
public:
    SqliteCollectionList(std::weak_ptr<zornic::MediaLibrary> library, std::shared_ptr<Readers> readers,
                         std::shared_ptr<const RowList> rows, std::shared_ptr<const QueryCompiler> compiler,
                         std::shared_ptr<RepresentativeValues> representatives, std::uint64_t generation)
        : PagedEntityList(std::move(rows)),
          _library(std::move(library)),
          _readers(std::move(readers)),
          _compiler(std::move(compiler)),
          _representatives(std::move(representatives)),
          _generation(generation) {}
    std::uint64_t indexOfEntity(const zornic::MediaEntity& entity) const override;

protected:
    Entities entitiesOfRows(const RowList::Rows& rows) const override;

private:
    using EntitiesByRow = std::unordered_map<std::int64_t, std::shared_ptr<zornic::MediaEntity>>;
    EntitiesByRow collections(Database& database, const RowList::Rows& rows) const;
    EntitiesByRow playlists(Database& database, const RowList::Rows& rows) const;
    EntitiesByRow singleItems(Database& database, const RowList::Rows& rows) const;
    zornic::Dictionary collectionValues(const Statement& row) const;

    const std::weak_ptr<zornic::MediaLibrary> _library;
    const std::shared_ptr<Readers> _readers;
    const std::shared_ptr<const QueryCompiler> _compiler;
    const std::shared_ptr<RepresentativeValues> _representatives;
    const std::uint64_t _generation;
};

}  // namespace helmo
