#include "Host/Library/NamesOnDisk.h"

#include <algorithm>
#include <system_error>

#include "Host/Library/PlaylistText.h"
#include "Host/Library/SortKey.h"

namespace helmo {

namespace {

namespace fs = std::filesystem;

/** Names that are remembered at a time. */
constexpr std::size_t mostNames = 20'000;

std::string spellingOf(std::string_view name) { return SortKey::folded(asUtf8(std::string(name))); }

}  // namespace

std::string NamesOnDisk::pathOnDisk(const std::string& path, const fs::path& root) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos || slash < root.native().size()) return path;
    const std::string folder = path.substr(0, slash);
    if (folder != _lastFolder) {
        _lastOnDisk = folderOnDisk(folder, root.native());
        _lastFolder = folder;
    }
    const auto name = _lastOnDisk ? nameOnDisk(*_lastOnDisk, path.substr(slash + 1)) : std::nullopt;
    return name ? *_lastOnDisk + '/' + *name : path;
}

std::optional<std::string> NamesOnDisk::folderOnDisk(std::string_view path, const std::string& root) {
    std::string found = root == "/" ? std::string() : root;
    path.remove_prefix(found.size());
    while (!path.empty()) {
        path.remove_prefix(1);
        const auto name = nameOnDisk(found, path.substr(0, path.find('/')));
        if (!name) return std::nullopt;
        found += '/' + *name;
        path.remove_prefix(std::min(path.find('/'), path.size()));
    }
    return found;
}

std::optional<std::string> NamesOnDisk::nameOnDisk(const std::string& folder, std::string_view name) {
    Folder& known = listed(folder);
    if (known.names.contains(name)) return std::string(name);
    if (known.bySpelling.empty())
        for (const auto& other : known.names) known.bySpelling.emplace(spellingOf(other), other);
    const auto alike = known.bySpelling.find(spellingOf(name));
    return alike == known.bySpelling.end() ? std::nullopt : std::optional(alike->second);
}

NamesOnDisk::Folder& NamesOnDisk::listed(const std::string& folder) {
    if (const auto known = _folders.find(folder); known != _folders.end()) return known->second;
    if (_count > mostNames) {
        _folders.clear();
        _count = 0;
    }
    Folder& listing = _folders[folder];
    std::error_code error;
    for (fs::directory_iterator at(folder + '/', error), end; !error && at != end; at.increment(error))
        listing.names.insert(at->path().filename().native());
    _count += listing.names.size();
    return listing;
}

}  // namespace helmo
