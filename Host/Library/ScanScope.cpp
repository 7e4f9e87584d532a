#include "Host/Library/ScanScope.h"

#include <string_view>

namespace helmo {

namespace {

/** Where so many folders have changed, walking through all of them costs no more. */
constexpr std::size_t maximumFolders = 1000;

}  // namespace

ScanScope ScanScope::everything() {
    ScanScope scope;
    scope.addEverything();
    return scope;
}

void ScanScope::addEverything() {
    _isWhole = true;
    _folders.clear();
}

void ScanScope::add(const ScanScope& other) {
    if (_isWhole) return;
    for (const auto& [folder, isTree] : other._folders) isTree ? addTree(folder) : addFolder(folder);
    if (_folders.size() > maximumFolders) {
        // A medium that is pulled out names every folder on it.
        std::map<std::filesystem::path, bool> fewer;
        for (auto& place : places()) fewer.emplace(std::move(place.folder), place.isTree);
        _folders.swap(fewer);
    }
    if (other._isWhole || _folders.size() > maximumFolders) addEverything();
}

bool ScanScope::isInTree(const std::filesystem::path& folder) const {
    for (auto above = folder;; above = above.parent_path()) {
        if (const auto found = _folders.find(above); found != _folders.end() && found->second) return true;
        if (!above.has_relative_path()) return false;
    }
}

bool ScanScope::contains(const std::filesystem::path& folder) const {
    return _isWhole || _folders.contains(folder) || isInTree(folder);
}

std::vector<ScanScope::Place> ScanScope::places() const {
    std::vector<Place> places;
    for (const auto& [folder, isTree] : _folders)
        if (!folder.has_relative_path() || !isInTree(folder.parent_path()))
            places.push_back({folder, isTree});
    return places;
}

bool isWithin(const std::filesystem::path& path, const std::filesystem::path& folder) {
    const std::string_view inner = path.native(), outer = folder.native();
    if (!inner.starts_with(outer)) return false;
    return inner.size() == outer.size() || outer.ends_with('/') || inner[outer.size()] == '/';
}

}  // namespace helmo
