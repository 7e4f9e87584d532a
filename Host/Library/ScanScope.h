#pragma once

#include <filesystem>
#include <map>
#include <vector>

namespace helmo {

/** Which folders a scan looks at: some, each with or without what lies inside, or all. A value. */
class ScanScope {
public:
    static ScanScope everything();

    /** One folder's own files. */
    void addFolder(const std::filesystem::path& folder) {
        if (!_isWhole) _folders.emplace(folder, false);
    }
    /** A folder and all folders inside. */
    void addTree(const std::filesystem::path& folder) {
        if (!_isWhole) _folders[folder] = true;
    }
    void addEverything();
    void add(const ScanScope& other);

    bool isEmpty() const { return !_isWhole && _folders.empty(); }
    bool isWhole() const { return _isWhole; }
    bool contains(const std::filesystem::path& folder) const;

    struct Place {
        std::filesystem::path folder;
        bool isTree = false;
    };
    /** The folders of a scope that isn't whole, none inside another's tree, in order. */
    std::vector<Place> places() const;

private:
    bool isInTree(const std::filesystem::path& folder) const;

    /** Folders, and whether with all inside. */
    std::map<std::filesystem::path, bool> _folders;
    bool _isWhole = false;
};

/** Whether `path` is `folder` or lies inside, by their names; both are normalised. */
bool isWithin(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace helmo
