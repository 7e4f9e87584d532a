#include "Host/Library/NewPersistentID.h"

#include <random>

namespace helmo {

std::int64_t newPersistentID() {
    thread_local std::mt19937_64 generator{std::random_device{}()};
    return static_cast<std::int64_t>(generator() >> 1 | 1);
}

}  // namespace helmo
