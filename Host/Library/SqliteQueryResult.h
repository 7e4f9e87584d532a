#pragma once

#include <mutex>

#include "Host/Library/QueryCompiler.h"
#include "Host/Library/ReadRowLists.h"
#include "Host/Library/Readers.h"
#include "Host/Library/RepresentativeValues.h"
#include "Host/Library/RowList.h"
#include "Platform/Media/MediaLibrary.h"
#include "Platform/Media/MediaQueryResult.h"

namespace helmo {

/** What the results of a library share. */
struct SharedReading {
    ReadRowLists lists;
    RepresentativeValues representatives;
};

/** The answer to one query. Each list is read when it is first asked for. Any thread. */
class SqliteQueryResult final : public zornic::MediaQueryResult {
public:
    SqliteQueryResult(std::weak_ptr<zornic::MediaLibrary> library, std::shared_ptr<Readers> readers,
                      std::shared_ptr<SharedReading> shared, std::uint64_t generation,
                      zornic::MediaQueryDescription description);

    std::shared_ptr<const zornic::MediaEntityList> items() const override;
    std::shared_ptr<const zornic::MediaEntityList> collections() const override;
    std::vector<zornic::MediaQuerySection> itemSections() const override;
    std::vector<zornic::MediaQuerySection> collectionSections() const override;
    zornic::MediaQuerySectionInfo itemSectionInfo() const override;
    zornic::MediaQuerySectionInfo collectionSectionInfo() const override;
    double maxAggregate(const std::string& itemProperty) const override;
    double totalAggregate(const std::string& itemProperty) const override;

private:
    struct Side {
        std::once_flag once;
        std::shared_ptr<const RowList> rows;
        std::shared_ptr<const zornic::MediaEntityList> list;
        std::once_flag sectionsOnce;
        std::vector<zornic::MediaQuerySection> sections;
        zornic::MediaQuerySectionInfo sectionInfo;
    };
    /** A screen at a time where that is possible; else what `toBeRead` returns is read whole. */
    template <class Read>
    std::shared_ptr<const RowList> rowList(std::optional<CountedQuery> counted, Read&& toBeRead) const;
    const Side& itemSide() const;
    const Side& collectionSide() const;
    double aggregate(const std::string& function, const std::string& itemProperty) const;
    /** The same, with its sections. */
    const Side& sectioned(const Side& side) const;

    const std::weak_ptr<zornic::MediaLibrary> _library;
    const std::shared_ptr<Readers> _readers;
    const std::shared_ptr<SharedReading> _shared;
    const std::uint64_t _generation;
    const std::shared_ptr<const QueryCompiler> _compiler;
    mutable Side _items;
    mutable Side _collections;
};

}  // namespace helmo
