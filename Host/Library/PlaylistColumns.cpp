#include "Host/Library/PlaylistColumns.h"

#include <algorithm>
#include <iterator>

#include "Host/Library/ItemColumns.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo::PlaylistColumns {

namespace Property = zornic::MediaPlaylistProperty;
using zornic::Value;

namespace {

enum class Kind { Text, Identifier, Truth };

struct Column {
    const char* property;
    Kind kind;
    const char* expression;
};

constexpr Column all[] = {
    {Property::PersistentID, Kind::Identifier, "p.pid"},
    {Property::ParentPersistentID, Kind::Identifier,
     "COALESCE((SELECT q.pid FROM playlist q WHERE q.id = p.parent_id), 0)"},
    {Property::Name, Kind::Text, "p.name"},
    {Property::IsFolder, Kind::Truth, "p.is_folder"},
    {Property::IsHidden, Kind::Truth, "p.is_hidden"},
    {Property::IsBrivoMix, Kind::Truth, "p.is_brivo_mix"},
    {Property::IsActiveBrivoPlaylist, Kind::Truth, "p.is_active_brivo"},
    {Property::IsDeletable, Kind::Truth, "p.is_deletable"},
};

const Column* columnOf(std::string_view property) {
    const auto* found =
        std::ranges::find_if(all, [&](const Column& column) { return property == column.property; });
    return found == std::end(all) ? nullptr : found;
}

}  // namespace

bool isProperty(std::string_view property) { return columnOf(property) != nullptr; }

const std::string& columns() {
    static const std::string text = [] {
        std::string list = "p.id";
        for (const Column& column : all) list += std::string(", ") + column.expression;
        return list;
    }();
    return text;
}

zornic::Dictionary values(const Statement& row) {
    zornic::Dictionary result;
    int at = 1;
    for (const Column& column : all) {
        switch (column.kind) {
            case Kind::Text:
                result.emplace(column.property, row.text(at));
                break;
            case Kind::Identifier:
                result.emplace(column.property, static_cast<std::uint64_t>(row.integer(at)));
                break;
            case Kind::Truth:
                result.emplace(column.property, row.integer(at) != 0);
                break;
        }
        ++at;
    }
    return result;
}

SqlQuery condition(const zornic::MediaPredicate& predicate) {
    const Column* column = columnOf(predicate.property());
    if (!column || predicate.value().isNone()) return {"0", {}};
    if (predicate.comparison() == zornic::MediaComparison::Contains)
        return {std::string("contains_text(") + column->expression + ", ?)", {sqlValue(predicate.value())}};
    return {std::string(column->expression) + " = ?", {sqlValue(predicate.value())}};
}

const char* holdsTrack() {
    return "t.id IN (WITH RECURSIVE inside (id) AS (SELECT id FROM playlist WHERE pid = ? AND present = 1 "
           "UNION "
           "SELECT c.id FROM playlist c JOIN inside ON c.parent_id = inside.id WHERE c.present = 1) "
           "SELECT i.track_id FROM playlist_item i WHERE i.playlist_id IN (SELECT id FROM inside))";
}

}  // namespace helmo::PlaylistColumns
