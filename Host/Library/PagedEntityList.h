#pragma once

#include <list>
#include <mutex>

#include "Host/Library/Database.h"
#include "Host/Library/RowList.h"
#include "Platform/Media/MediaEntity.h"

namespace helmo {

/** A list whose entities are made some at a time, in one read, when one of them is asked for: about a screen
   of them where a list is jumped to, more at once where it is gone through. Those used last are kept. Any
   thread. */
class PagedEntityList : public zornic::MediaEntityList {
public:
    using Entities = std::vector<std::shared_ptr<zornic::MediaEntity>>;
    /** Most entities made in one read. */
    static constexpr std::uint64_t pageLength = 32;

    std::uint64_t count() const override { return _rows->count(); }
    std::shared_ptr<zornic::MediaEntity> entityAtIndex(std::uint64_t index) const override;

protected:
    explicit PagedEntityList(std::shared_ptr<const RowList> rows) : _rows(std::move(rows)) {}
    /** Entities of these rows, `pageLength` at most, in the same order; none for one that is gone. */
    virtual Entities entitiesOfRows(const RowList::Rows& rows) const = 0;
    /** Where `entity`, whose row number is `row`, stands; where it was shown, when it has moved since. */
    std::uint64_t indexOf(const zornic::MediaEntity& entity, std::uint32_t row) const;

private:
    /** Entities that stand one after the other; none at the end for rows that are gone. */
    struct Page {
        zornic::Range range;
        Entities entities;
    };
    static constexpr std::size_t maximumPages = 16;

    const Page* keptPage(std::uint64_t index) const;
    zornic::Range rangeToRead(std::uint64_t index) const;

    const std::shared_ptr<const RowList> _rows;
    mutable std::mutex _mutex;
    /** The one used last is the first. */
    mutable std::list<Page> _pages;
};

/** Marks for a page of rows, in parentheses. */
std::string marksOfPage();
/** Binds `rows` to a statement's next marks, and NULL to the rest of a page's. */
void bindPage(Statement& statement, const RowList::Rows& rows);

}  // namespace helmo
