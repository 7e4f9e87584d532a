#include "Host/Library/Readers.h"

namespace helmo {

Readers::Connection& Readers::connection() { return zornic::mainQueue().isCurrent() ? _main : _others; }

void Readers::close() {
    for (Connection* connection : {&_main, &_others, &_long}) {
        std::lock_guard lock(connection->mutex);
        connection->database.reset();
    }
}

}  // namespace helmo
