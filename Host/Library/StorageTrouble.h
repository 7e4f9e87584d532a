#pragma once

#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace helmo {

/** What keeps a library from being stored as usual. Whatever it is, music is listed and played. */
enum class StorageTrouble {
    /** The database was damaged: it lies aside, and a new one is to be filled from the music. */
    Damaged,
    /** The file, its folder or its file system is read-only; nothing is stored. */
    ReadOnly,
    /** The disk is full; what is new isn't stored. */
    NoRoom,
    /** Another program keeps writing; what is new isn't stored yet. */
    Busy,
    /** Storing fails, and it is the disk's fault. */
    Failing,
    /** Another program has the database for itself: this run uses a temporary library. */
    InUse,
    /** There can be no database where it belongs: this run uses a temporary library. */
    Elsewhere
};

/** What went wrong with a library's storage in this run. Any thread. */
class StorageTroubles {
public:
    using Handler = std::function<void(StorageTrouble)>;

    /** Logs `line` unless it was logged before. */
    void log(const std::string& line);
    /** Notes a trouble and tells the handler, each time, on the calling thread. */
    void add(StorageTrouble trouble);
    /** Is told of what went wrong so far, once each, at once and on the calling thread, and of what follows.
     */
    void setHandler(Handler handler);

private:
    std::mutex _mutex;
    std::set<std::string> _lines;
    std::vector<StorageTrouble> _troubles;
    Handler _handler;
};

}  // namespace helmo
