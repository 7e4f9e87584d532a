#include "Host/Library/CountedQuery.h"

#include "Host/Library/QueryFilter.h"

namespace helmo {

std::string joinedKeys(const std::vector<std::string>& keys, const char* direction) {
    std::string text;
    for (const auto& key : keys) text += (text.empty() ? "" : ", ") + key + direction;
    return text;
}

SqlQuery CountedQuery::select(const std::string& what) const {
    SqlQuery query{"SELECT " + what + " FROM " + _table + " WHERE ", {}};
    append(query, _condition);
    return query;
}

SqlQuery CountedQuery::rowsFrom(const std::string& key, std::uint64_t skipped, std::uint64_t limit) const {
    SqlQuery query = select(_keys.back());
    append(query, {" AND " + _keys.front() + " >= ? ORDER BY " + joinedKeys(_keys) + " LIMIT ? OFFSET ?",
                   {Blob{key}, static_cast<std::int64_t>(limit), static_cast<std::int64_t>(skipped)}});
    return query;
}

SqlQuery CountedQuery::rowsBefore(const std::string& key, std::uint64_t skipped, std::uint64_t limit) const {
    SqlQuery query = select(_keys.back());
    append(query,
           {" AND " + _keys.front() + " < ? ORDER BY " + joinedKeys(_keys, " DESC") + " LIMIT ? OFFSET ?",
            {Blob{key}, static_cast<std::int64_t>(limit), static_cast<std::int64_t>(skipped)}});
    return query;
}

SqlQuery CountedQuery::keyOf(std::uint32_t row) const {
    SqlQuery query = select(_keys.front());
    append(query, {" AND " + _keys.back() + " = ?", {std::int64_t{row}}});
    return query;
}

SqlQuery CountedQuery::countOfRowsBetween(const std::string& key, std::uint32_t row) const {
    SqlQuery query = select("COUNT(*)");
    const std::string keys = joinedKeys(_keys);
    append(query, {" AND " + _keys.front() + " >= ? AND (" + keys + ") < (SELECT " + keys + " FROM " +
                       _table + " WHERE " + _keys.back() + " = ?)",
                   {Blob{key}, std::int64_t{row}}});
    return query;
}

}  // namespace helmo
