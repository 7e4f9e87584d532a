#pragma once

#include <filesystem>

namespace helmo::benchmarks {

/** The least that a first scan has to do, on one thread: walks `music`, reads each file's tags with nothing
   but the tag library, and puts one row a track into a new database `file`. Milliseconds. */
double scanFloor(const std::filesystem::path& music, const std::filesystem::path& file);

/** The least that a scan has to do to see that nothing changed since `scanFloor` wrote `file`: reads what is
   known, walks, and compares sizes and times. Milliseconds. */
double rescanFloor(const std::filesystem::path& music, const std::filesystem::path& file);

}  // namespace helmo::benchmarks
