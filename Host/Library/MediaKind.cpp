#include "Host/Library/MediaKind.h"

#include <string_view>

#include "Host/Library/AlbumFolder.h"
#include "Host/Library/MediaFiles.h"
#include "Host/Library/MediaKindWord.h"
#include "Host/Library/TagText.h"

namespace helmo {

namespace {

using zornic::MediaType::Audiobook;
using zornic::MediaType::Music;
using zornic::MediaType::MusicVideo;
using zornic::MediaType::Podcast;

/** Several genres may stand in one text: the first one that is a kind counts. */
std::int64_t kindOfGenre(std::string_view genre) {
    if (const auto kind = mediaKindOfWord(genre)) return kind;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = genre.find_first_of(";,/|");
        if (const auto kind = mediaKindOfWord(genre.substr(0, end))) return kind;
        if (end != std::string_view::npos) genre.remove_prefix(end + 1);
    }
    return 0;
}

std::int64_t kindOfFolders(const std::filesystem::path& file, const std::filesystem::path& root) {
    std::string_view path = file.native();
    const std::size_t outermost = root.native().size();
    for (auto slash = path.rfind('/'); slash != std::string_view::npos && slash >= outermost && slash > 0;) {
        path = path.substr(0, slash);
        slash = path.rfind('/');
        if (const auto kind = mediaKindOfWord(path.substr(slash + 1))) return kind;
    }
    return 0;
}

std::int64_t kindOf(const TrackTags& tags, const std::filesystem::path& file,
                    const std::filesystem::path& root) {
    if (tags.mediaType != 0) return tags.mediaType;
    if (const auto kind = kindOfGenre(tags.genre)) return kind;
    if (const auto kind = kindOfFolders(file, root)) return kind;
    if (isAudiobookFile(file.native())) return Audiobook;
    return tags.hasVideo ? MusicVideo : Music;
}

/** The name of the folder that holds only what belongs together; empty when it is one for all of a kind. */
std::string folderOfWork(const std::filesystem::path& file, const std::filesystem::path& root) {
    auto folder = file.parent_path();
    if (folder != root) folder = AlbumFolder::of(folder).path;
    const std::string name = folder.filename().string();
    return folder == root || mediaKindOfWord(name) != 0 ? std::string() : cleanTagText(name);
}

}  // namespace

void MediaKind::decide(TrackTags& tags, const std::filesystem::path& file,
                       const std::filesystem::path& root) {
    tags.mediaType = kindOf(tags, file, root);
    if ((tags.mediaType & spoken) == 0) return;
    // A file without any tags has got its folder's name by now.
    const bool isOfKindFolder = mediaKindOfWord(tags.albumTitle) != 0 &&
                                tags.albumTitle == cleanTagText(file.parent_path().filename().string());
    if (!tags.albumTitle.empty() && !isOfKindFolder) return;
    tags.albumTitle = folderOfWork(file, root);
    if (tags.albumTitle.empty() && tags.mediaType == Podcast) tags.albumTitle = tags.artist;
    if (tags.albumTitle.empty()) tags.albumTitle = tags.title;
}

}  // namespace helmo
