#include "Host/Library/AlbumFolder.h"

#include "Host/Library/DiscName.h"

namespace helmo {

AlbumFolder AlbumFolder::of(const std::filesystem::path& folder) {
    const DiscName name = DiscName::ofFolder(folder.filename().native());
    if (name.disc == 0) return {folder, 0};
    return {name.album.empty() ? folder.parent_path() : folder.parent_path() / name.album, name.disc};
}

void completeDisc(TrackTags& tags, int discOfFolder) {
    if (DiscName title = DiscName::ofTitle(tags.albumTitle); title.disc != 0) {
        tags.albumTitle = std::move(title.album);
        if (const DiscName sorted = DiscName::ofTitle(tags.sortAlbumTitle); sorted.disc != 0)
            tags.sortAlbumTitle = sorted.album;
        if (tags.discNumber == 0) tags.discNumber = title.disc;
    }
    const bool saysNothing = tags.discNumber == 0 || (tags.discNumber == 1 && tags.discCount <= 1);
    if (discOfFolder != 0 && saysNothing) tags.discNumber = discOfFolder;
}

}  // namespace helmo
