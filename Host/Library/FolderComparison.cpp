#include "Host/Library/FolderComparison.h"

namespace helmo {

namespace {

/** Goes along a sorted list of known files with a sorted list of names. */
class Known {
public:
    explicit Known(const std::vector<KnownFolder::File>& files) : _next(files.begin()), _end(files.end()) {}
    /** Calls `skipped` for the files before `name`; that file, or none when it isn't known. */
    template <class Skipped>
    const KnownFolder::File* find(const std::string& name, Skipped&& skipped) {
        for (; _next != _end; ++_next) {
            const int order = _next->name.compare(name);
            if (order == 0) return &*_next++;
            if (order > 0) return nullptr;
            skipped(*_next);
        }
        return nullptr;
    }
    template <class Skipped>
    void skipRest(Skipped&& skipped) {
        for (; _next != _end; ++_next) skipped(*_next);
    }

private:
    std::vector<KnownFolder::File>::const_iterator _next, _end;
};

bool isSame(const KnownFolder::File* known, const FoundFile& file) {
    return known && known->size == file.size && known->mtime == file.mtime;
}

}  // namespace

FolderComparison::FolderComparison(const std::vector<FoundFile>& music, const KnownFolder& known) {
    Known tracks(known.tracks), broken(known.unreadable);
    const auto hide = [&](const KnownFolder::File& file) {
        if (file.isPresent) presences.push_back({file.track, known.id, false});
    };
    const auto forget = [&](const KnownFolder::File& file) { forgotten.push_back({known.id, file.name}); };
    for (const FoundFile& file : music) {
        const auto* track = tracks.find(file.name, hide);
        const auto* unreadable = broken.find(file.name, forget);
        if (isSame(unreadable, file)) {
            if (track) hide(*track);
        } else if (!isSame(track, file)) {
            unread.push_back({file, track ? track->track : 0, unreadable != nullptr});
        } else {
            if (!track->isPresent) presences.push_back({track->track, known.id, true});
            if (unreadable) forget(*unreadable);
        }
    }
    tracks.skipRest(hide);
    broken.skipRest(forget);
}

}  // namespace helmo
