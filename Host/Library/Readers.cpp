#include "Host/Library/Readers.h"

namespace helmo {

Readers::Readers(std::filesystem::path file, Database::Access access)
    : _file(std::move(file)), _access(access) {
    open(_main);
}

void Readers::open(Connection& connection) {
    connection.database.emplace(_file, _access, connection.waiting);
    connection.database->execute("PRAGMA cache_size = -" + std::to_string(connection.cache));
}

Readers::Connection& Readers::connection() { return zornic::mainQueue().isCurrent() ? _main : _others; }

void Readers::close() {
    _isClosed = true;
    for (Connection* connection : {&_main, &_others, &_long}) {
        std::lock_guard lock(connection->mutex);
        connection->database.reset();
    }
}

}  // namespace helmo
