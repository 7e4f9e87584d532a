#pragma once

#include <mutex>

#include "Host/Library/QueryCompiler.h"
#include "Host/Library/Readers.h"
#include "Host/Library/RowList.h"
#include "Platform/Media/MediaLibrary.h"
#include "Platform/Media/MediaQueryResult.h"

namespace helmo {

/** The answer to one query. Each list is read when it is first asked for. Any thread. */
class SqliteQueryResult final : public zornic::MediaQueryResult {
public:
    SqliteQueryResult(std::weak_ptr<zornic::MediaLibrary> library, std::shared_ptr<Readers> readers,
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
    };
    const Side& itemSide() const;
    const Side& collectionSide() const;
    double aggregate(const std::string& function, const std::string& itemProperty) const;
    std::vector<zornic::MediaQuerySection> sections(const Side& side) const;
    zornic::MediaQuerySectionInfo sectionInfo(const Side& side) const;

    const std::weak_ptr<zornic::MediaLibrary> _library;
    const std::shared_ptr<Readers> _readers;
    const std::shared_ptr<const QueryCompiler> _compiler;
    mutable Side _items;
    mutable Side _collections;
};

}  // namespace helmo
