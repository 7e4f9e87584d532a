#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Media/MediaPlaylist.h"
#include "Platform/Media/MediaQuery.h"

namespace zornic {

/** A new query with exactly these predicates, grouped by the platform's default. Main thread, as all of
 * these. */
std::shared_ptr<MediaQuery> ZRN_queryWithFilterPredicates(std::vector<MediaPredicate> predicates);

/** Whether a list of `query` shows what a queue of `other` plays: equal but for filters on shuffling and
   streaming quality, or the same playlist, or the same album or artist. Nothing equals no query. */
bool ZRN_isEqualToNowPlayingQuery(const std::shared_ptr<MediaQuery>& query,
                                  const std::shared_ptr<MediaQuery>& other);

/** The playlist or, first, the folder that the query is filtered to; none when it is neither. */
std::shared_ptr<MediaPlaylist> ZRN_playlist(const MediaQuery& query);
/** Its name; nullopt without a playlist, and for one that is gone or has no name. */
std::optional<std::string> ZRN_playlistTitle(const MediaQuery& query);

/** The query itself, or a copy without filters on shuffling and streaming quality when it has any. */
std::shared_ptr<MediaQuery> _music_nowPlayingComparableQuery(const std::shared_ptr<MediaQuery>& query);

}  // namespace zornic
