#pragma once

#include "Host/Library/TagReader.h"

namespace helmo {

/** Where a file says in which language its texts are, and not how they are sorted, they are sorted without
   that language's articles and with all other words, whatever the driver's language. */
void completeSortNames(TrackTags& tags);

}  // namespace helmo
