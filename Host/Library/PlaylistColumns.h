#pragma once

#include "Host/Library/Database.h"
#include "Platform/Foundation/Value.h"
#include "Platform/Media/MediaPredicate.h"

namespace helmo {

/** How a playlist's properties stand in the tables. In all SQL here the playlist's row is `p`. */
namespace PlaylistColumns {

bool isProperty(std::string_view property);
/** SELECT <columns> FROM playlist p. The first column is the row number. */
const std::string& columns();
zornic::Dictionary values(const Statement& row);
/** The condition of a property predicate on a playlist. */
SqlQuery condition(const zornic::MediaPredicate& predicate);
/** Condition that the track `t` is in the playlist, or in one inside the folder, whose persistent ID is
 * bound. */
const char* holdsTrack();

}  // namespace PlaylistColumns

}  // namespace helmo
