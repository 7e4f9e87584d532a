#include "Platform/Media/ArtworkStore.h"

#include <algorithm>
#include <cassert>
#include <tuple>
#include <utility>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/RunLoop.h"
#include "Platform/Media/MediaLibrary.h"

namespace zornic {

namespace {

/** What an entry costs beside its pixels, so that a million missing pictures don't cost nothing. */
constexpr std::size_t entryCost = 4096;
/** So few entries cost nothing to look through. */
constexpr std::size_t alwaysLookedThrough = 32;

template <class T>
bool isSet(const std::weak_ptr<T>& pointer) {
    const std::weak_ptr<T> none;
    return pointer.owner_before(none) || none.owner_before(pointer);
}

template <class T>
int order(const std::weak_ptr<T>& left, const std::weak_ptr<T>& right) {
    return left.owner_before(right) ? -1 : right.owner_before(left) ? 1 : 0;
}

}  // namespace

bool ArtworkKey::operator<(const ArtworkKey& other) const {
    // What is the same picture in the same size stands together.
    if (const int byLibrary = order(library, other.library)) return byLibrary < 0;
    const auto picture = std::tie(token, size.width, size.height);
    const auto otherPicture = std::tie(other.token, other.size.width, other.size.height);
    if (picture != otherPicture) return picture < otherPicture;
    if (const int byContext = order(context, other.context)) return byContext < 0;
    return std::tie(identifier, scale) < std::tie(other.identifier, other.scale);
}

bool ArtworkKey::isOver() const { return library.expired() || (isSet(context) && context.expired()); }

ArtworkStore& ArtworkStore::shared() {
    assert(!RunLoop::hasMain() || RunLoop::isMainThread());
    static auto& store = *new ArtworkStore;
    return store;
}

std::optional<Image> ArtworkStore::known(const ArtworkKey& key) {
    const auto found = _index.find(key);
    if (found == _index.end()) return std::nullopt;
    const auto entry = found->second;
    const auto library = key.library.lock();
    if (!entry->image && library && library->generation() != entry->generation) {
        remove(entry);
        return std::nullopt;
    }
    _entries.splice(_entries.begin(), _entries, entry);
    return entry->image;
}

Image ArtworkStore::atAnyScale(const ArtworkKey& key) const {
    const ArtworkKey first{key.library, {}, {}, key.token, key.size, 0};
    for (auto found = _index.lower_bound(first); found != _index.end(); ++found) {
        const Entry& entry = *found->second;
        if (entry.key.token != key.token || entry.key.size != key.size ||
            order(entry.key.library, key.library) != 0)
            break;
        if (entry.image) return entry.image;
    }
    return {};
}

void ArtworkStore::load(const ArtworkKey& key, Waiter waiter) {
    auto& load = _loads[key];
    const bool isUnderWay = !load.ticket.expired() || std::ranges::any_of(_queue, [&](const auto& queued) {
        return !(queued < key) && !(key < queued);
    });
    load.waiters.push_back(std::move(waiter));
    if (!isUnderWay) _queue.push_back(key);
    startLoads();
}

void ArtworkStore::evictAll() {
    _index.clear();
    _cost = 0;
    std::exchange(_entries, {}).clear();
}

void ArtworkStore::startLoads() {
    while (!_queue.empty() && startNext()) {
    }
}

/** Whether there was room for one more. */
bool ArtworkStore::startNext() {
    const auto running =
        std::ranges::count_if(_loads, [](const auto& entry) { return !entry.second.ticket.expired(); });
    if (static_cast<std::size_t>(running) >= loadsAtOnce) return false;
    const auto key = _queue.front();
    _queue.pop_front();
    const auto load = _loads.find(key);
    if (load == _loads.end()) return true;
    // Nothing is decoded for rows that a fast scroll has already carried away.
    auto& waiters = load->second.waiters;
    std::erase_if(waiters, [](const auto& waiter) { return !waiter.isWaiting(); });
    if (waiters.empty())
        _loads.erase(load);
    else
        load->second.ticket = begin(key);
    return true;
}

std::shared_ptr<ArtworkStore::Ticket> ArtworkStore::begin(const ArtworkKey& key) {
    const auto ticket = std::make_shared<Ticket>();
    auto load = [key, ticket, library = key.library.lock()]() mutable {
        const auto generation = library ? library->generation() : 0;
        auto source = library ? library->loadArtwork(key.token, key.size, key.scale) : nullptr;
        // The library goes back with the answer: if this is its last owner, it ends on the main thread.
        mainQueue().async([key, ticket = std::move(ticket), library = std::move(library), generation,
                           source = std::move(source)]() mutable {
            ticket.reset();
            shared().finish(key, generation, std::move(source));
        });
    };
    // By way of the main loop: the frame that wants pictures is drawn before they are loaded beside it.
    mainQueue().async(
        [load = std::move(load)]() mutable { globalQueue(QueuePriority::Default).async(std::move(load)); });
    return ticket;
}

void ArtworkStore::finish(const ArtworkKey& key, std::uint64_t generation,
                          std::shared_ptr<const ImageSource> source) {
    const auto image = source ? Image(std::move(source)) : Image();
    keep(key, image, generation);
    if (auto load = _loads.extract(key))
        for (const auto& waiter : load.mapped().waiters) waiter.deliver(image);
    startLoads();
}

void ArtworkStore::keep(const ArtworkKey& key, const Image& image, std::uint64_t generation) {
    dropWhatIsOver();
    if (key.isOver()) return;
    if (const auto found = _index.find(key); found != _index.end()) remove(found->second);
    const auto cost = entryCost + (image ? image.source()->cost() : 0);
    _entries.push_front({key, image, cost, generation});
    _index.emplace(key, _entries.begin());
    _cost += cost;
    keepWithinLimit();
}

void ArtworkStore::setByteLimit(std::size_t bytes) {
    _byteLimit = bytes;
    keepWithinLimit();
}

void ArtworkStore::keepWithinLimit() {
    while (_cost > _byteLimit) remove(std::prev(_entries.end()));
}

void ArtworkStore::remove(Entries::iterator entry) {
    _cost -= entry->cost;
    _index.erase(entry->key);
    _entries.erase(entry);
}

void ArtworkStore::dropWhatIsOver() {
    if (_entries.size() > alwaysLookedThrough && _entries.size() < _sizeToLookThrough) return;
    for (auto entry = _entries.begin(); entry != _entries.end();) {
        const auto here = entry++;
        if (here->key.isOver()) remove(here);
    }
    _sizeToLookThrough = 2 * _entries.size();
}

}  // namespace zornic
