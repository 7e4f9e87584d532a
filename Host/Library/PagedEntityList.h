#pragma once

#include "Host/Library/RowList.h"
#include "Platform/Foundation/EvictingCache.h"
#include "Platform/Media/MediaEntity.h"

namespace helmo {

/** A list whose entities are made a page at a time, in one read, when one of the page is asked for; the pages
   used last are kept. Any thread. */
class PagedEntityList : public zornic::MediaEntityList {
public:
    using Entities = std::vector<std::shared_ptr<zornic::MediaEntity>>;
    static constexpr std::uint64_t pageLength = 64;

    std::uint64_t count() const override { return _rows->count(); }
    std::shared_ptr<zornic::MediaEntity> entityAtIndex(std::uint64_t index) const override;

protected:
    explicit PagedEntityList(std::shared_ptr<const RowList> rows) : _rows(std::move(rows)) {}
    /** Entities of these rows in the same order; none for one that is gone. */
    virtual Entities entitiesOfRows(const std::vector<std::uint32_t>& rows) const = 0;
    const RowList& rows() const { return *_rows; }

private:
    static constexpr std::size_t maximumPages = 32;

    const std::shared_ptr<const RowList> _rows;
    mutable zornic::EvictingCache<std::uint64_t, std::shared_ptr<const Entities>> _pages{maximumPages};
};

/** Binds `rows` to a statement's next marks, and NULL to the rest of a page's. */
void bindPage(Statement& statement, const std::vector<std::uint32_t>& rows);

}  // namespace helmo
