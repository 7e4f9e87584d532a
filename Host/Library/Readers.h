#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "Host/Library/Database.h"
#include "Platform/Foundation/DispatchQueue.h"

namespace helmo {

/** The reading connections: one for the main thread, which so never waits for another reader, one for all
   other threads, and one for what takes long; the latter two are opened when they are first needed. What
   SQLite reports goes to a handler, and the reader gets its fallback. Any thread. */
class Readers {
public:
    using FailureHandler = std::function<void(const DatabaseError&)>;

    /** The database must exist. Throws. */
    Readers(std::filesystem::path file, Database::Access access);
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
        /** Pages that it may keep, in kilobytes. */
        const int cache;
        const std::chrono::milliseconds waiting = patience;
        std::mutex mutex{};
        std::optional<Database> database{};
    };
    void open(Connection& connection);
    template <class T, class Read>
    T with(Connection& connection, T fallback, Read& read) {
        try {
            std::lock_guard lock(connection.mutex);
            if (_isClosed) return fallback;
            if (!connection.database) open(connection);
            return read(*connection.database);
        } catch (const DatabaseError& error) {
            if (_failureHandler) _failureHandler(error);
            return fallback;
        }
    }
    Connection& connection();

    const std::filesystem::path _file;
    const Database::Access _access;
    FailureHandler _failureHandler;
    std::atomic<bool> _isClosed = false;
    Connection _main{1536, patienceOnMain};
    Connection _others{512};
    Connection _long{256};
};

}  // namespace helmo
