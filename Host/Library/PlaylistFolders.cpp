#include "Host/Library/PlaylistFolders.h"

#include <algorithm>

namespace helmo {

namespace {

bool isCalledPlaylists(const std::filesystem::path& directory) {
    constexpr std::string_view name = "playlists";
    return std::ranges::equal(directory.filename().native(), name, {},
                              [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
}

}  // namespace

bool isHiddenPlaylist(const std::filesystem::path& playlist) {
    return playlist.filename().native().starts_with('.');
}

PlaylistFolders::PlaylistFolders(const std::set<std::filesystem::path>& playlists,
                                 const PlaylistFileReader& reader, std::shared_ptr<Readers> readers)
    : _reader(reader), _readers(std::move(readers)) {
    for (const auto& playlist : playlists)
        if (!isHiddenPlaylist(playlist)) _directories.try_emplace(playlist.parent_path());
}

std::vector<std::filesystem::path> PlaylistFolders::above(const std::filesystem::path& playlist) {
    const auto* root = _reader.rootOf(playlist.native());
    if (!root || isHiddenPlaylist(playlist)) return {};
    std::vector<std::filesystem::path> folders;
    for (auto directory = playlist.parent_path(); directory != *root; directory = directory.parent_path())
        folders.push_back(directory);
    folders.push_back(*root);
    std::ranges::reverse(folders);
    const auto named = std::ranges::find_if(folders, isCalledPlaylists);
    if (named != folders.end()) return {named + 1, folders.end()};
    folders.erase(folders.begin());
    std::erase_if(folders, [this](const auto& directory) { return !isForPlaylists(directory); });
    return folders;
}

bool PlaylistFolders::isForPlaylists(const std::filesystem::path& directory) {
    const auto found = _directories.find(directory);
    if (found == _directories.end()) return false;
    if (!found->second)
        found->second = _readers->read(false, [&](Database& database) {
            // '0' follows '/': what lies between them lies below.
            return database.integer({"SELECT EXISTS (SELECT 1 FROM folder f CROSS JOIN track t "
                                     "ON t.folder_id = f.id WHERE t.present = 1 AND "
                                     "(f.path = ?1 OR (f.path > ?1 || '/' AND f.path < ?1 || '0')))",
                                     {directory.native()}}) == 0;
        });
    return *found->second;
}

}  // namespace helmo
