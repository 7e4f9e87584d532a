#pragma once

#include <cstdint>

namespace helmo {

/** A persistent ID that nothing has yet: random and positive, so that it is the same number signed and
   unsigned. Any thread. */
std::int64_t newPersistentID();

}  // namespace helmo
