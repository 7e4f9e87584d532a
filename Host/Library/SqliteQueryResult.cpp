#include "Host/Library/SqliteQueryResult.h"

#include "Host/Library/CountedRowList.h"
#include "Host/Library/ItemColumns.h"
#include "Host/Library/SectionIndex.h"
#include "Host/Library/SqliteCollectionList.h"
#include "Host/Library/SqliteItemList.h"

namespace helmo {

using zornic::MediaQuerySection;
using zornic::MediaQuerySectionInfo;

SqliteQueryResult::SqliteQueryResult(std::weak_ptr<zornic::MediaLibrary> library,
                                     std::shared_ptr<Readers> readers, std::shared_ptr<SharedReading> shared,
                                     std::uint64_t generation, zornic::MediaQueryDescription description)
    : _library(std::move(library)),
      _readers(std::move(readers)),
      _shared(std::move(shared)),
      _generation(generation),
      _compiler(std::make_shared<const QueryCompiler>(std::move(description))) {}

template <class Read>
std::shared_ptr<const RowList> SqliteQueryResult::rowList(std::optional<CountedQuery> counted,
                                                          Read&& toBeRead) const {
    if (counted) return std::make_shared<const CountedRowList>(_readers, std::move(*counted));
    return _shared->lists.list(_readers, toBeRead(), _generation);
}

const SqliteQueryResult::Side& SqliteQueryResult::itemSide() const {
    std::call_once(_items.once, [this] {
        _items.rows = rowList(_compiler->countedItems(), [this] { return _compiler->items(); });
        _items.list = std::make_shared<const SqliteItemList>(_library, _readers, _items.rows);
    });
    return _items;
}

const SqliteQueryResult::Side& SqliteQueryResult::collectionSide() const {
    std::call_once(_collections.once, [this] {
        if (_compiler->isOfItems())
            _collections.rows = itemSide().rows;
        else
            _collections.rows =
                rowList(_compiler->countedCollections(), [this] { return _compiler->collections(); });
        _collections.list = std::make_shared<const SqliteCollectionList>(
            _library, _readers, _collections.rows, _compiler,
            std::shared_ptr<RepresentativeValues>(_shared, &_shared->representatives), _generation);
    });
    return _collections;
}

std::shared_ptr<const zornic::MediaEntityList> SqliteQueryResult::items() const { return itemSide().list; }
std::shared_ptr<const zornic::MediaEntityList> SqliteQueryResult::collections() const {
    return collectionSide().list;
}

const SqliteQueryResult::Side& SqliteQueryResult::sectioned(const Side& side) const {
    if (!_compiler->description().useSections) return side;
    auto& filled = &side == &_items ? _items : _collections;
    std::call_once(filled.sectionsOnce, [&] {
        const SectionIndex index(*_readers, filled.rows->sections());
        filled.sections = index.sections();
        filled.sectionInfo = index.info();
    });
    return side;
}

std::vector<MediaQuerySection> SqliteQueryResult::itemSections() const {
    return sectioned(itemSide()).sections;
}
std::vector<MediaQuerySection> SqliteQueryResult::collectionSections() const {
    return sectioned(collectionSide()).sections;
}
MediaQuerySectionInfo SqliteQueryResult::itemSectionInfo() const { return sectioned(itemSide()).sectionInfo; }
MediaQuerySectionInfo SqliteQueryResult::collectionSectionInfo() const {
    return sectioned(collectionSide()).sectionInfo;
}

double SqliteQueryResult::aggregate(const std::string& function, const std::string& itemProperty) const {
    const auto column = ItemColumns::number(itemProperty);
    if (!column) return 0;
    return _readers->read(0.0, [&](Database& database) {
        auto row = database.prepare(_compiler->aggregate(function, *column));
        return row.step() ? row.number(0) : 0.0;
    });
}

double SqliteQueryResult::maxAggregate(const std::string& itemProperty) const {
    return aggregate("MAX", itemProperty);
}
double SqliteQueryResult::totalAggregate(const std::string& itemProperty) const {
    return aggregate("SUM", itemProperty);
}

}  // namespace helmo
