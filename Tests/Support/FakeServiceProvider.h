#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "View Controllers/ZRNHelmoServiceProvider.h"

namespace zornic {

/** A host's playback service that is there and plays nothing. */
class FakeServiceProvider final : public ZRNHelmoServiceProvider {
public:
    void reloadPlayerMediaQueryOptions(const std::shared_ptr<AVController>&,
                                       const std::shared_ptr<MediaQuery>&, const Dictionary&) override {}
    void reloadPlayerBrivoMixPlaylistOptions(const std::shared_ptr<AVController>&,
                                             const std::shared_ptr<MediaPlaylist>&,
                                             const Dictionary&) override {}
    void reloadPlayerRadioStationOptionsCompletion(const std::shared_ptr<AVController>&,
                                                   const std::shared_ptr<RadioStation>&, const Dictionary&,
                                                   std::function<void(std::optional<Error>)>) override {}
};

}  // namespace zornic
