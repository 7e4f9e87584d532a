#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/Foundation/Object.h"
#include "Platform/Toolkit/Image.h"

namespace zornic {

class MediaLibrary;
struct ArtworkKey;

/** One picture of a library, to be had at the size at which it is shown. Pictures are read and scaled in the
   background and kept by cache identifier, token, size and scale within a byte limit. Main thread. */
class ArtworkCatalog : public Object {
public:
    /** Configures a destination with the picture, or with no image when there is none. */
    using Completion = std::function<void(const Image&)>;

    ArtworkCatalog(std::weak_ptr<MediaLibrary> library, std::string token);

    const std::string& token() const { return _token; }
    Size fittingSize() const { return _fittingSize; }
    /** In points. */
    void setFittingSize(Size size) { _fittingSize = size; }
    double destinationScale() const { return _destinationScale; }
    void setDestinationScale(double scale) { _destinationScale = scale; }
    /** Pictures asked for under one identifier by one requesting context share a cache that ends with the
     * context. */
    void setCacheIdentifier(std::string identifier, const std::shared_ptr<Object>& requestingContext);

    /** Binds this catalogue to `destination` and delivers its picture there on the main thread, at once when
       it is at hand. A newer binding of the destination supersedes this one, whose picture then never
       arrives; nothing happens once the destination is gone. */
    void setDestination(const std::shared_ptr<Object>& destination, Completion completion);
    /** Ends whatever is bound to `destination`. */
    static void unbind(const std::shared_ptr<Object>& destination);
    /** The catalogue bound to `destination`; none without one. */
    static std::shared_ptr<ArtworkCatalog> boundTo(const std::shared_ptr<Object>& destination);
    /** The picture without a destination; `completion` on the main thread, at once when it is at hand. */
    void requestImage(Completion completion);
    /** The picture if it is in the cache at the present size, for whichever scale; no image otherwise. */
    Image imageAtHand() const;

    /** Whether both show the same picture, at whichever size. */
    bool isVisuallyIdenticalTo(const ArtworkCatalog& other) const;
    /** Frees every cached picture. */
    static void evictAll();
    /** How many bytes all cached pictures together may take; 32 MB unless set. Those used longest ago go. */
    static void setCacheLimit(std::size_t bytes);

private:
    ArtworkKey cacheKey() const;
    /** What can be said at once: a picture at hand, or that there can't be one. */
    std::optional<Image> knownPicture() const;

    const std::weak_ptr<MediaLibrary> _library;
    const std::string _token;
    Size _fittingSize;
    double _destinationScale = 1;
    std::string _cacheIdentifier;
    std::weak_ptr<Object> _requestingContext;
};

}  // namespace zornic
