#include "Host/HostServiceProvider.h"

#include "Data Sources/ZRNQueryPlaybackContext.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/AVController.h"
#include "Platform/Media/MediaPlaylist.h"

namespace helmo {

using namespace zornic;

void HostServiceProvider::reloadPlayerMediaQueryOptions(const std::shared_ptr<AVController>& player,
                                                        const std::shared_ptr<MediaQuery>& query,
                                                        const Dictionary& options) {
    const auto context = make<ZRNQueryPlaybackContext>(query);
    context->setShuffleType(valueForKey(options, "shuffleType").asInteger());
    if (const Value& index = valueForKey(options, "startIndex")) context->setStartIndex(index.asUnsigned());
    player->reloadWithPlaybackContext(context);
}

void HostServiceProvider::reloadPlayerBrivoMixPlaylistOptions(const std::shared_ptr<AVController>& player,
                                                              const std::shared_ptr<MediaPlaylist>& playlist,
                                                              const Dictionary&) {
    player->reloadWithPlaybackContext(make<ZRNQueryPlaybackContext>(playlist->itemsQuery()));
}

void HostServiceProvider::reloadPlayerRadioStationOptionsCompletion(
    const std::shared_ptr<AVController>&, const std::shared_ptr<RadioStation>&, const Dictionary&,
    std::function<void(std::optional<Error>)> completion) {
    mainQueue().async([completion = std::move(completion)] {
        completion(
            Error("HelmoErrorDomain", 1, {{Error::LocalizedDescriptionKey, "There is no radio service."}}));
    });
}

}  // namespace helmo
