#pragma once

#include "Host/Library/PagedEntityList.h"
#include "Host/Library/Readers.h"
#include "Platform/Media/MediaLibrary.h"

namespace helmo {

/** Tracks by index. */
class SqliteItemList final : public PagedEntityList {
public:
    SqliteItemList(std::weak_ptr<zornic::MediaLibrary> library, std::shared_ptr<Readers> readers,
                   std::shared_ptr<const RowList> rows)
        : PagedEntityList(std::move(rows)), _library(std::move(library)), _readers(std::move(readers)) {}
    std::uint64_t indexOfEntity(const zornic::MediaEntity& entity) const override;

protected:
    Entities entitiesOfRows(const RowList::Rows& rows) const override;

private:
    const std::weak_ptr<zornic::MediaLibrary> _library;
    const std::shared_ptr<Readers> _readers;
};

}  // namespace helmo
