#include "Host/Version.h"

namespace helmo {

const char* version() { return HELMO_VERSION; }

}  // namespace helmo
