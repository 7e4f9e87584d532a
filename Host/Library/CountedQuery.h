#pragma once

#include <string>
#include <vector>

#include "Host/Library/Database.h"

namespace helmo {

/** The statements for a list whose rows are counted by the first bytes of their keys: any screen of it is
   read without what stands before. Rows are numbers of a table's rows. Immutable; any thread. */
class CountedQuery {
public:
    /** `counts`: first bytes of keys, in order, and how many rows have keys that start so, which may be told
       in several rows. `table`: with a name of one letter. `condition`: what rows of the list meet. `keys`:
       columns that order it, the counted key first, the row's number last. */
    CountedQuery(SqlQuery counts, std::string table, SqlQuery condition, std::vector<std::string> keys)
        : _counts(std::move(counts)),
          _table(std::move(table)),
          _condition(std::move(condition)),
          _keys(std::move(keys)) {}

    const SqlQuery& counts() const { return _counts; }
    /** `limit` row numbers, `skipped` rows behind the first whose key is not below `key`. */
    SqlQuery rowsFrom(const std::string& key, std::uint64_t skipped, std::uint64_t limit) const;
    /** `limit` row numbers, last ones first, `skipped` rows before the first whose key is not below `key`. */
    SqlQuery rowsBefore(const std::string& key, std::uint64_t skipped, std::uint64_t limit) const;
    /** The key of a row; no row when it isn't in the list. */
    SqlQuery keyOf(std::uint32_t row) const;
    /** How many rows stand before `row`, from the first whose key is not below `key` on. */
    SqlQuery countOfRowsBetween(const std::string& key, std::uint32_t row) const;

private:
    /** SELECT `what` of the list's rows, to be continued. */
    SqlQuery select(const std::string& what) const;

    const SqlQuery _counts;
    const std::string _table;
    const SqlQuery _condition;
    const std::vector<std::string> _keys;
};

/** Keys as they stand behind ORDER BY, each with `direction`. */
std::string joinedKeys(const std::vector<std::string>& keys, const char* direction = "");

}  // namespace helmo
