#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Foundation/Object.h"
#include "Platform/Toolkit/Image.h"

namespace zornic {

class MediaLibrary;

/** Names a picture at the size at which it is shown. A value. */
struct ArtworkKey {
    std::weak_ptr<MediaLibrary> library;
    /** On whose behalf it is kept: it goes with that object. None: for as long as there is room. */
    std::weak_ptr<Object> context;
    std::string identifier, token;
    /** In points. */
    Size size;
    double scale = 1;

    bool operator<(const ArtworkKey& other) const;
    /** Whether its library or the object on whose behalf it is kept is gone. */
    bool isOver() const;
};

/** The process's pictures: loads each once, a few at a time and off the main thread, and keeps those used
   last within a limit of bytes. That there is no picture is remembered as well, until the library changes.
   Main thread. */
class ArtworkStore {
public:
    /** More would only make the pictures of the rows on screen wait for those that follow. */
    static constexpr std::size_t loadsAtOnce = 3;

    /** Somebody who waits for a picture. */
    struct Waiter {
        /** Whether the picture is still wanted, asked before its loading starts. */
        std::function<bool()> isWaiting;
        std::function<void(const Image&)> deliver;
    };

    static ArtworkStore& shared();

    /** What is known: a picture, or no image where there is none; nullopt when it must be loaded. */
    std::optional<Image> known(const ArtworkKey& key);
    /** A picture at hand for another identifier or scale; no image without one. */
    Image atAnyScale(const ArtworkKey& key) const;
    /** Loads the picture, or joins those who already wait for it. */
    void load(const ArtworkKey& key, Waiter waiter);
    void evictAll();
    void setByteLimit(std::size_t bytes);

private:
    struct Entry {
        ArtworkKey key;
        Image image;
        std::size_t cost;
        std::uint64_t generation;
    };
    /** Lives while a load is under way on another thread: one that is dropped there, unanswered, is known by
     * its end. */
    struct Ticket {};
    struct Load {
        std::vector<Waiter> waiters;
        std::weak_ptr<Ticket> ticket;
    };
    using Entries = std::list<Entry>;
    using Loads = std::map<ArtworkKey, Load>;

    void startLoads();
    bool startNext();
    std::shared_ptr<Ticket> begin(const ArtworkKey& key);
    void finish(const ArtworkKey& key, std::uint64_t generation, std::shared_ptr<const ImageSource> source);
    void keep(const ArtworkKey& key, const Image& image, std::uint64_t generation);
    void remove(Entries::iterator entry);
    /** Looks through many entries only when there are twice as many as the last time. */
    void dropWhatIsOver();
    void keepWithinLimit();

    std::size_t _byteLimit = 32 * 1024 * 1024;
    Entries _entries;  // used last first
    std::map<ArtworkKey, Entries::iterator> _index;
    std::size_t _cost = 0, _sizeToLookThrough = 0;
    Loads _loads;
    std::list<ArtworkKey> _queue;
};

}  // namespace zornic
