#pragma once

#include <mutex>

#include "Host/Library/Database.h"
#include "Platform/Foundation/DispatchQueue.h"

namespace helmo {

/** The reading connections: one for the main thread, which so never waits for another reader, one for all
   other threads, and one for what takes long. What SQLite reports is logged, and the reader gets its
   fallback. Any thread. */
class Readers {
public:
    /** The database must exist. Throws. */
    explicit Readers(const std::filesystem::path& file) : _main(file), _others(file), _long(file) {}

    /** Calls `read` with the connection for the calling thread. */
    template <class T, class Read>
    T read(T fallback, Read&& read) {
        return with(connection(), std::move(fallback), read);
    }
    /** Calls `read` with the connection for what takes long, on which no other reader waits. */
    template <class T, class Read>
    T readLong(T fallback, Read&& read) {
        return with(_long, std::move(fallback), read);
    }
    /** Where long lists are read. A queue of its own, so that those who wait for a list never keep it from
     * being read. */
    zornic::DispatchQueue& listQueue() { return _listQueue; }

private:
    struct Connection {
        explicit Connection(const std::filesystem::path& file) : database(file, Database::Access::ReadOnly) {}
        std::mutex mutex;
        Database database;
    };
    template <class T, class Read>
    static T with(Connection& connection, T fallback, Read& read) {
        try {
            std::lock_guard lock(connection.mutex);
            return read(connection.database);
        } catch (const DatabaseError& error) {
            logFailure(error);
            return fallback;
        }
    }
    Connection& connection();
    static void logFailure(const DatabaseError& error);

    Connection _main;
    Connection _others;
    Connection _long;
    zornic::SerialQueue _listQueue{"helmo.library.lists", zornic::QueuePriority::Background};
};

}  // namespace helmo
