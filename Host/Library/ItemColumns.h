#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Host/Library/Database.h"
#include "Platform/Foundation/Value.h"
#include "Platform/Media/MediaPredicate.h"

namespace helmo {

/** How an item's properties stand in the tables. In all SQL here the track's row is `t`. */
namespace ItemColumns {

/** Columns and tables of a statement that reads all properties: SELECT <columns> FROM <tables> WHERE ... The
   first column is the track's row number. */
const std::string& columns();
const std::string& tables();
/** All properties of the row that a statement with `columns` stands on; missing ones are none. */
zornic::Dictionary values(const Statement& row);

/** The same for what rows of lists show and what is asked of a row that is chosen; the rest is read item by
    item. */
const std::string& rowColumns();
const std::string& rowTables();
zornic::Dictionary rowValues(const Statement& row);

/** Number by which items may be summed and ordered; none for a property that is no number of the track's own.
 */
std::optional<std::string> number(std::string_view property);
/** The condition of a property predicate on an item. A property that items don't have is met by none. */
SqlQuery condition(const zornic::MediaPredicate& predicate);

}  // namespace ItemColumns

/** A property's value as it is compared with a column. */
SqlValue sqlValue(const zornic::Value& value);

}  // namespace helmo
