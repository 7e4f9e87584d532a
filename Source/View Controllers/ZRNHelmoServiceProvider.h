#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Platform/Foundation/Error.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/Value.h"

namespace zornic {

class AVController;
class MediaPlaylist;
class MediaQuery;
class RadioStation;

/** The host's playback service: each request replaces what the player plays, and its outcome shows in the
   player's own notifications. The host implements it; held weakly by the shell. Main thread. */
class ZRNHelmoServiceProvider : public Object {
public:
    /** `options`: "shuffleType" (0 or 1) and, when playing starts at a chosen row, "startIndex" (index into
       the query's items). */
    virtual void reloadPlayerMediaQueryOptions(const std::shared_ptr<AVController>& player,
                                               const std::shared_ptr<MediaQuery>& query,
                                               const Dictionary& options) = 0;
    virtual void reloadPlayerBrivoMixPlaylistOptions(const std::shared_ptr<AVController>& player,
                                                     const std::shared_ptr<MediaPlaylist>& playlist,
                                                     const Dictionary& options) = 0;
    /** `completion` with an error or none, on the main thread, possibly later. */
    virtual void reloadPlayerRadioStationOptionsCompletion(
        const std::shared_ptr<AVController>& player, const std::shared_ptr<RadioStation>& station,
        const Dictionary& options, std::function<void(std::optional<Error>)> completion) = 0;
};

}  // namespace zornic
