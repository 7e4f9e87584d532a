#include "Host/Library/SqliteQueryResult.h"

#include "Host/Library/CountedRowList.h"
#include "Host/Library/ItemColumns.h"
#include "Host/Library/ReadRowList.h"
#include "Host/Library/SectionIndex.h"
#include "Host/Library/SqliteCollectionList.h"
#include "Host/Library/SqliteItemList.h"

namespace helmo {

using zornic::MediaQuerySection;
using zornic::MediaQuerySectionInfo;

SqliteQueryResult::SqliteQueryResult(std::weak_ptr<zornic::MediaLibrary> library,
                                     std::shared_ptr<Readers> readers,
                                     zornic::MediaQueryDescription description)
    : _library(std::move(library)),
      _readers(std::move(readers)),
      _compiler(std::make_shared<const QueryCompiler>(std::move(description))) {}

const SqliteQueryResult::Side& SqliteQueryResult::itemSide() const {
    std::call_once(_items.once, [this] {
        if (_compiler->countedOrder())
            _items.rows = std::make_shared<const CountedRowList>(_readers, _compiler);
        else
            _items.rows = std::make_shared<const ReadRowList>(*_readers, _compiler->items());
        _items.list = std::make_shared<const SqliteItemList>(_library, _readers, _items.rows);
    });
    return _items;
}

const SqliteQueryResult::Side& SqliteQueryResult::collectionSide() const {
    std::call_once(_collections.once, [this] {
        if (_compiler->isOfItems())
            _collections.rows = itemSide().rows;
        else
            _collections.rows = std::make_shared<const ReadRowList>(*_readers, _compiler->collections());
        _collections.list =
            std::make_shared<const SqliteCollectionList>(_library, _readers, _collections.rows, _compiler);
    });
    return _collections;
}

std::shared_ptr<const zornic::MediaEntityList> SqliteQueryResult::items() const { return itemSide().list; }
std::shared_ptr<const zornic::MediaEntityList> SqliteQueryResult::collections() const {
    return collectionSide().list;
}

std::vector<MediaQuerySection> SqliteQueryResult::sections(const Side& side) const {
    if (!_compiler->description().useSections) return {};
    return SectionIndex::read(*_readers).sections(side.rows->sections());
}

MediaQuerySectionInfo SqliteQueryResult::sectionInfo(const Side& side) const {
    if (!_compiler->description().useSections) return {};
    return SectionIndex::read(*_readers).info(side.rows->sections());
}

std::vector<MediaQuerySection> SqliteQueryResult::itemSections() const { return sections(itemSide()); }
std::vector<MediaQuerySection> SqliteQueryResult::collectionSections() const {
    return sections(collectionSide());
}
MediaQuerySectionInfo SqliteQueryResult::itemSectionInfo() const { return sectionInfo(itemSide()); }
MediaQuerySectionInfo SqliteQueryResult::collectionSectionInfo() const {
    return sectionInfo(collectionSide());
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
