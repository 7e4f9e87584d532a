#include "Host/Display/CairoImageSource.h"

#include <atomic>

namespace helmo {

namespace {

std::uint64_t nextIdentity() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

}  // namespace

CairoImageSource::CairoImageSource() : _identity(nextIdentity()) {}

}  // namespace helmo
