#pragma once

#include <string>

namespace helmo {

/** Whether a location is an address ("http://...") rather than the path of a file. */
bool isAddress(const std::string& location);
/** The address of a location: itself, or its path made absolute and escaped; empty when it has none. Any
 * thread. */
std::string addressOf(const std::string& location);
/** What to call a location in a sentence: the file's name, or the address. Always valid UTF-8. */
std::string nameOf(const std::string& location);

/** Why the file at `path` can't even be read ("there is no such file"); empty when it can. Touches the disk.
 */
std::string unreadableReason(const std::string& path);
/** What a file begins as. */
enum class FileKind { Sound, Other, Unknown };
/** Touches the disk; any thread; GStreamer must be prepared. */
FileKind kindOfFile(const std::string& path);

}  // namespace helmo
