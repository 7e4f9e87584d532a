#pragma once

#include <atomic>
#include <filesystem>
#include <mutex>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "Host/Library/ScanScope.h"
#include "Host/Reader/Descriptor.h"

struct inotify_event;

namespace helmo {

/** Hears of what changes in folders of music. A scan says which folders there are while it goes through them;
   what happens in them is gathered as folders to be scanned again. A file that was made and is still being
   written counts once it is closed. Any thread. */
class FolderWatch {
public:
    explicit FolderWatch(std::vector<std::filesystem::path> roots);
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    const std::vector<std::filesystem::path>& roots() const { return _roots; }

    // The scanning thread
    void beginScan(const ScanScope& scope);
    /** A folder is about to be read: what changes from now on is heard of. */
    void add(const std::filesystem::path& folder);
    /** Folders of `scope` that were not added since the beginning are no longer watched. Roots that are not
       there are waited for. What has to be scanned once more, since it may have come unheard. */
    [[nodiscard]] ScanScope endScan(const ScanScope& scope);
    /** Whether a file is still being written by whoever made it. */
    bool isBeingWritten(const std::filesystem::path& file) const;

    // Whoever waits
    /** Becomes readable when something happens; negative when nothing can be heard of. */
    int descriptor() const { return _notifications.number(); }
    /** Takes over what has happened, without waiting for more; whether that is to be scanned. */
    bool drain();
    /** What is to be scanned since the last time. */
    ScanScope takeChanges();
    void addChanges(const ScanScope& changes);
    /** Whether every folder is watched; otherwise one has to look now and then. */
    bool isComplete() const { return _notifications && !_isFull; }

private:
    struct Folder {
        std::filesystem::path path;
        /** The scan that saw it last. */
        unsigned scan = 0;
    };
    /** A folder in which the way to a root that isn't there may begin. */
    struct Approach {
        int watch = -1;
        std::string name;
        std::filesystem::path root;
    };
    /** What a reading of notifications came to. */
    struct Tidings {
        ScanScope changes;
        /** What went of which only the folders that are watched tell whether it was one. */
        std::unordered_set<std::string> gone;
    };

    /** The number of a watch of a folder; negative when there can be none. */
    int watch(const std::filesystem::path& folder, std::uint32_t events);
    void noteLimit(const std::string& limit);
    void forgetUnseen(const ScanScope& scope);
    ScanScope awaitRoots();
    Approach approachTo(const std::filesystem::path& root);
    void endWatch(int watch);
    void take(const inotify_event& event, Tidings& tidings);
    void takeSelf(const inotify_event& event, const std::filesystem::path& folder, Tidings& tidings);
    void takeEntry(const inotify_event& event, const std::filesystem::path& folder, Tidings& tidings);
    void takeFile(const inotify_event& event, const std::filesystem::path& folder, Tidings& tidings);
    void takeArrival(bool wasMade, const std::filesystem::path& path, Tidings& tidings);
    void takeApproach(const inotify_event& event, Tidings& tidings);
    void addGone(Tidings& tidings) const;

    const std::vector<std::filesystem::path> _roots;
    const Descriptor _notifications;

    mutable std::mutex _mutex;
    std::unordered_map<int, Folder> _folders;
    std::vector<Approach> _approaches;
    std::set<std::string> _limitsLogged;
    unsigned _scan = 0;
    std::atomic<bool> _isFull = false;

    mutable std::mutex _changesMutex;
    ScanScope _changes;
    /** Files that were made and not yet closed. */
    std::unordered_set<std::string> _beingWritten;
};

}  // namespace helmo
