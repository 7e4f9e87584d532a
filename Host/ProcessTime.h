#pragma once

namespace helmo {

/** Milliseconds since this process was started, to the system's tick of ten; 0 when the system does not tell.
 */
double millisecondsSinceProcessStart();

}  // namespace helmo
