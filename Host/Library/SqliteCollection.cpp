#include "Host/Library/SqliteCollection.h"

namespace helmo {

using zornic::Value;
namespace Property = zornic::MediaCollectionProperty;

SqliteCollection::SqliteCollection(std::weak_ptr<zornic::MediaLibrary> library,
                                   zornic::PersistentID persistentID, zornic::Dictionary values,
                                   std::shared_ptr<const QueryCompiler> compiler,
                                   std::shared_ptr<Readers> readers, std::int64_t row)
    : MediaItemCollection(std::move(library), persistentID, std::move(values),
                          compiler->itemsOf(persistentID)),
      _compiler(std::move(compiler)),
      _readers(std::move(readers)),
      _row(row) {}

Value SqliteCollection::valueForProperty(std::string_view property) const {
    if (auto value = MediaItemCollection::valueForProperty(property)) return value;
    if (property == Property::AlbumCount) return counted(_compiler->numberOfAlbums(_row), _albums);
    if (property == Property::ArtistCount) return counted(_compiler->numberOfArtists(_row), _artists);
    return {};
}

Value SqliteCollection::counted(const SqlQuery& query, std::optional<Value>& known) const {
    {
        std::lock_guard lock(_mutex);
        if (known) return *known;
    }
    const Value count =
        _readers->read(std::int64_t{0}, [&](Database& database) { return database.integer(query); });
    std::lock_guard lock(_mutex);
    known = count;
    return count;
}

}  // namespace helmo
