#pragma once

#include "Host/Library/Database.h"

namespace helmo {

/** Albums are told apart by where they lie as well, and tracks are known by what they say of themselves.
   Every file is read again. */
void tellAlbumsByPlace(Database& database);

}  // namespace helmo
