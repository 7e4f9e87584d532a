#include "Host/Library/ScanBatch.h"

namespace helmo {

std::vector<std::pair<std::int64_t, std::size_t>> ScanBatch::store(TrackStore& store,
                                                                   bool mayHaveMoved) const {
    std::vector<std::pair<std::int64_t, std::size_t>> folders;
    for (const Picture& picture : pictures) {
        const std::int64_t row = store.folderId(picture.folder->path);
        folders.emplace_back(row, picture.folder->medium);
        store.setFolderPicture(row, picture.fileName, picture.stamp);
    }
    const ScannedFolder* last = nullptr;
    std::int64_t row = 0;
    std::vector<TrackStore::NewTrack> tracks;
    tracks.reserve(files.size());
    for (const auto& [folder, found, known, wasUnreadable, reading] : files) {
        if (folder.get() != last) {
            last = folder.get();
            row = store.folderId(folder->path);
            folders.emplace_back(row, folder->medium);
        }
        MusicFile file{folder->path, found.name, found.size, found.mtime};
        if (wasUnreadable || known != 0) store.forgetUnreadable(row, found.name);
        if (reading.isTrack)
            tracks.push_back({std::move(file), &reading.tags, {known, mayHaveMoved}});
        else
            store.noteUnreadable(file, reading.problem);
    }
    store.store(tracks);
    // Behind the files, of which one may be a track that is missing where it was.
    for (const auto& [track, folder, isPresent] : presences) store.markPresent(track, folder, isPresent);
    for (const auto& [folder, fileName] : forgotten) store.forgetUnreadable(folder, fileName);
    return folders;
}

}  // namespace helmo
