#include "Platform/Media/ArtworkCatalog.h"

#include <map>
#include <utility>

#include "Platform/Media/ArtworkStore.h"
#include "Platform/Media/MediaLibrary.h"

namespace zornic {

namespace {

struct Binding {
    std::shared_ptr<ArtworkCatalog> catalog;
    /** Tells it from earlier and later bindings of its destination. */
    std::uint64_t number = 0;
    /** Empty once the picture has arrived. */
    ArtworkCatalog::Completion completion;
};

/** What is bound to which destination. */
class Bindings {
public:
    static Bindings& shared() {
        static auto& bindings = *new Bindings;
        return bindings;
    }

    std::uint64_t bind(const std::shared_ptr<Object>& destination, std::shared_ptr<ArtworkCatalog> catalog,
                       ArtworkCatalog::Completion completion) {
        dropDead();
        Binding binding{std::move(catalog), ++_lastNumber, std::move(completion)};
        std::swap(_bound[destination], binding);
        return _lastNumber;
    }

    void unbind(const std::shared_ptr<Object>& destination) { _bound.extract(destination); }

    std::shared_ptr<ArtworkCatalog> boundTo(const std::shared_ptr<Object>& destination) const {
        const auto found = _bound.find(destination);
        return found == _bound.end() ? nullptr : found->second.catalog;
    }

    bool isWaiting(const std::weak_ptr<Object>& destination, std::uint64_t number) const {
        const auto found = _bound.find(destination);
        return !destination.expired() && found != _bound.end() && found->second.number == number;
    }

    void deliver(const std::weak_ptr<Object>& destination, std::uint64_t number, const Image& image) {
        const auto living = destination.lock();
        if (!living || !isWaiting(destination, number)) return;
        // Taken out first: the completion may bind its destination anew.
        const auto completion = std::exchange(_bound[destination].completion, nullptr);
        if (completion) completion(image);
    }

private:
    using Map = std::map<std::weak_ptr<Object>, Binding, std::owner_less<std::weak_ptr<Object>>>;

    /** What completions hold may lead back here as it goes, so it goes when the map is whole again. */
    void dropDead() {
        std::vector<Map::node_type> dead;
        for (auto at = _bound.begin(); at != _bound.end();) {
            const auto here = at++;
            if (here->first.expired()) dead.push_back(_bound.extract(here));
        }
    }

    Map _bound;
    std::uint64_t _lastNumber = 0;
};

}  // namespace

ArtworkCatalog::ArtworkCatalog(std::weak_ptr<MediaLibrary> library, std::string token)
    : _library(std::move(library)), _token(std::move(token)) {}

void ArtworkCatalog::setCacheIdentifier(std::string identifier,
                                        const std::shared_ptr<Object>& requestingContext) {
    _cacheIdentifier = std::move(identifier);
    _requestingContext = requestingContext;
}

void ArtworkCatalog::setDestination(const std::shared_ptr<Object>& destination, Completion completion) {
    if (!destination) return;
    auto& bindings = Bindings::shared();
    const auto number = bindings.bind(destination, strong(this), std::move(completion));
    const std::weak_ptr<Object> bound = destination;
    if (const auto picture = knownPicture()) return bindings.deliver(bound, number, *picture);
    ArtworkStore::shared().load(
        cacheKey(),
        {[bound, number] { return Bindings::shared().isWaiting(bound, number); },
         [bound, number](const Image& image) { Bindings::shared().deliver(bound, number, image); }});
}

void ArtworkCatalog::unbind(const std::shared_ptr<Object>& destination) {
    Bindings::shared().unbind(destination);
}

std::shared_ptr<ArtworkCatalog> ArtworkCatalog::boundTo(const std::shared_ptr<Object>& destination) {
    return Bindings::shared().boundTo(destination);
}

void ArtworkCatalog::requestImage(Completion completion) {
    if (!completion) return;
    if (const auto picture = knownPicture()) return completion(*picture);
    ArtworkStore::shared().load(cacheKey(), {[] { return true; }, std::move(completion)});
}

Image ArtworkCatalog::imageAtHand() const {
    const auto key = cacheKey();
    const auto picture = ArtworkStore::shared().known(key);
    return picture ? *picture : ArtworkStore::shared().atAnyScale(key);
}

bool ArtworkCatalog::isVisuallyIdenticalTo(const ArtworkCatalog& other) const {
    return _token == other._token && !_library.owner_before(other._library) &&
           !other._library.owner_before(_library);
}

void ArtworkCatalog::evictAll() { ArtworkStore::shared().evictAll(); }

void ArtworkCatalog::setCacheLimit(std::size_t bytes) { ArtworkStore::shared().setByteLimit(bytes); }

ArtworkKey ArtworkCatalog::cacheKey() const {
    return {_library, _requestingContext, _cacheIdentifier, _token, _fittingSize, _destinationScale};
}

std::optional<Image> ArtworkCatalog::knownPicture() const {
    if (_token.empty() || _fittingSize.empty() || _library.expired()) return Image();
    return ArtworkStore::shared().known(cacheKey());
}

}  // namespace zornic
