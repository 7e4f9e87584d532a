#pragma once

#include <cstdint>

namespace TagLib {
class File;
class PropertyMap;
}  // namespace TagLib

namespace helmo {

/** The kind of media that a file's tags name in so many words; 0 when they don't. The genre is left aside. */
std::int64_t toldKind(TagLib::File& file, const TagLib::PropertyMap& properties);
/** The same of properties alone. */
std::int64_t toldKind(const TagLib::PropertyMap& properties);

}  // namespace helmo
