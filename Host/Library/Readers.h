#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "Host/Library/Database.h"
#include "Platform/Foundation/DispatchQueue.h"

namespace helmo {

/** The reading connections: one for the main thread, which so never waits for another reader, one for all
   other threads, and one for what takes long. What SQLite reports goes to a handler, and the reader gets its
   fallback. Any thread. */
class Readers {
public:
    using FailureHandler = std::function<void(const DatabaseError&)>;

    /** The database must exist. Throws. */
    Readers(const std::filesystem::path& file, Database::Access access)
        : _main(file, access, 2048, patienceOnMain), _others(file, access, 512), _long(file, access, 256) {}
    /** Called on the reading thread. Before the first reader. */
    void setFailureHandler(FailureHandler handler) { _failureHandler = std::move(handler); }
    /** Waits for those who read and closes the file. Whoever reads afterwards, for a list that is old by now,
       gets his fallback. */
    void close();

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

private:
    /** The main thread would rather show less than stand still. */
    static constexpr std::chrono::milliseconds patienceOnMain{100}, patience{5000};

    struct Connection {
        /** `cache`: kilobytes of pages that it may keep. */
        Connection(const std::filesystem::path& file, Database::Access access, int cache,
                   std::chrono::milliseconds waiting = patience) {
            database.emplace(file, access, waiting);
            database->execute("PRAGMA cache_size = -" + std::to_string(cache));
        }
        std::mutex mutex;
        std::optional<Database> database;
    };
    template <class T, class Read>
    T with(Connection& connection, T fallback, Read& read) {
        try {
            std::lock_guard lock(connection.mutex);
            if (!connection.database) return fallback;
            return read(*connection.database);
        } catch (const DatabaseError& error) {
            if (_failureHandler) _failureHandler(error);
            return fallback;
        }
    }
    Connection& connection();

    FailureHandler _failureHandler;
    Connection _main;
    Connection _others;
    Connection _long;
};

}  // namespace helmo
