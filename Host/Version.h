#pragma once

namespace helmo {

/** As "0.1.0". */
const char* version();

}  // namespace helmo
