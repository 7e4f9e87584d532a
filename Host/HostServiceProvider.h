#pragma once

#include "View Controllers/ZRNHelmoServiceProvider.h"

namespace helmo {

/** Rebuilds the player's queue for the display. helmo has no radio of its own: such a request ends with an
   error. Main thread. */
class HostServiceProvider final : public zornic::ZRNHelmoServiceProvider {
public:
    void reloadPlayerMediaQueryOptions(const std::shared_ptr<zornic::AVController>& player,
                                       const std::shared_ptr<zornic::MediaQuery>& query,
                                       const zornic::Dictionary& options) override;
    void reloadPlayerBrivoMixPlaylistOptions(const std::shared_ptr<zornic::AVController>& player,
                                             const std::shared_ptr<zornic::MediaPlaylist>& playlist,
                                             const zornic::Dictionary& options) override;
    void reloadPlayerRadioStationOptionsCompletion(
        const std::shared_ptr<zornic::AVController>& player,
        const std::shared_ptr<zornic::RadioStation>& station, const zornic::Dictionary& options,
        std::function<void(std::optional<zornic::Error>)> completion) override;
};

}  // namespace helmo
