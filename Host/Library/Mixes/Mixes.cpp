#include "Host/Library/Mixes/Mixes.h"

#include <cstdlib>

#include "Host/Library/Mixes/MixPlan.h"
#include "Host/Library/ThreadPriority.h"

namespace helmo {

namespace {

/** One part in so many that is new or gone is much. */
constexpr std::int64_t muchOfSongs = 10;
constexpr std::int64_t manyAlbums = 50;

}  // namespace

Mixes::Mixes(std::shared_ptr<SqliteMediaLibrary> library, bool isEnabled, MixTexts texts)
    : _library(std::move(library)), _texts(std::move(texts)), _isEnabled(isEnabled) {
    _library->setBrivoEnabled(isEnabled);
}

Mixes::~Mixes() { _isStopping = true; }

void Mixes::setEnabled(bool isEnabled) {
    if (_isEnabled.exchange(isEnabled) == isEnabled) return;
    _library->setBrivoEnabled(isEnabled);
    update();
}

void Mixes::update() {
    if (_isQueued.exchange(true)) return;
    _queue.async([this] {  // the queue ends before this does
        standBack();
        _isQueued = false;
        if (!_isStopping) perform();
    });
}

void Mixes::perform() {
    const auto readers = _library->readers();
    const bool areShown = _isEnabled;
    const bool isOtherwise = readers->readLong(
        false, [&](Database& database) { return MixStore::needsShown(database, areShown); });
    if (isOtherwise && _library->writeMixes([&](MixStore& store) { store.setShown(areShown); }))
        _library->noteChange();
    if (areShown && areDue(*readers)) make(readers);
}

bool Mixes::areDue(Readers& readers) const {
    return readers.readLong(false, [this](Database& database) {
        const auto made = MixStore::made(database);
        if (!made || made->texts != _texts.stamp()) return true;
        const auto now = MixStore::current(database).songs;
        const auto enough = made->songs / muchOfSongs + 1;
        const auto added = MixStore::songsAddedSince(database, *made, enough);
        const auto goneOrBack = std::abs(made->songs + added - now);
        return added + goneOrBack >= enough || MixStore::albumsAddedSince(database, *made) >= manyAlbums ||
               MixStore::isAnyTooShort(database);
    });
}

bool Mixes::keep(const std::shared_ptr<Readers>& readers, const std::function<void(MixStore&)>& change) {
    bool isSame = false;
    const bool isStored = _library->writeMixes([&](MixStore& store) {
        isSame = _library->readers() == readers;
        if (isSame) change(store);
    });
    return isStored && isSame;
}

void Mixes::make(const std::shared_ptr<Readers>& readers) {
    const std::function<bool()> isStopping = [this] { return _isStopping || !_isEnabled; };
    auto made = readers->readLong(MixesMade(), MixStore::current);
    made.texts = _texts.stamp();
    const MixSource source(*readers, isStopping);
    const auto mixes = MixPlan(source, _texts, isStopping).make();
    for (const Mix& mix : mixes)
        if (isStopping() || !keep(readers, [&](MixStore& store) { store.store(mix); })) return;
    // What was made is whole only now: a making that was cut short begins again.
    const auto finish = [&](MixStore& store) {
        store.keepOnly(mixes);
        store.noteMade(made);
    };
    if (!isStopping() && keep(readers, finish)) _library->noteChange();
}

}  // namespace helmo
