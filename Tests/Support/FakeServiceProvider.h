#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

#include "Platform/Media/MediaPlaylist.h"
#include "View Controllers/ZRNHelmoServiceProvider.h"

namespace zornic {

/** A host's playback service that plays nothing and writes down what it was last asked for. */
class FakeServiceProvider final : public ZRNHelmoServiceProvider {
public:
    void reloadPlayerMediaQueryOptions(const std::shared_ptr<AVController>&,
                                       const std::shared_ptr<MediaQuery>& query,
                                       const Dictionary& options) override {
        asked = query;
        given = options;
    }
    void reloadPlayerBrivoMixPlaylistOptions(const std::shared_ptr<AVController>&,
                                             const std::shared_ptr<MediaPlaylist>& playlist,
                                             const Dictionary& options) override {
        asked = playlist;
        given = options;
    }
    void reloadPlayerRadioStationOptionsCompletion(const std::shared_ptr<AVController>&,
                                                   const std::shared_ptr<RadioStation>&, const Dictionary&,
                                                   std::function<void(std::optional<Error>)>) override {
        ADD_FAILURE() << "whoever opens a station has loaded it";
    }
    /** A query or a playlist. */
    std::shared_ptr<Object> asked;
    std::optional<Dictionary> given;
};

}  // namespace zornic
