#include "Host/Library/Readers.h"

#include "Host/Log.h"

namespace helmo {

Readers::Connection& Readers::connection() { return zornic::mainQueue().isCurrent() ? _main : _others; }

void Readers::logFailure(const DatabaseError& error) {
    logLine(std::string("library: reading the database failed: ") + error.what());
}

}  // namespace helmo
