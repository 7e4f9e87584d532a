#pragma once

#include <filesystem>

#include "Host/Library/Database.h"

namespace helmo {

/** Touches every table and index, which finds most damage at once. Throws. */
void probe(Database& database);

/** Moves a database and what belongs to it to a dated name in the same folder; that name. Throws what the
   file system reports. */
std::filesystem::path setAside(const std::filesystem::path& file);

}  // namespace helmo
