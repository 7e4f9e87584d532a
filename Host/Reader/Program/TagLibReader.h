#pragma once

#include "Host/Library/TagReader.h"
#include "Host/Reader/Program/EmbeddedPicture.h"

namespace helmo {

/** Empty when `file` is a regular file with something in it that may be read; else why it can't be. */
std::string whyUnreadable(const std::filesystem::path& file);

/** Reads tags in this process. A file without sound is no track. One with music whose tags are wrong is a
   track: what is wrong is left out and named. Opens files for reading only. */
class TagLibReader final : public TagReader {
public:
    /** Throws `std::bad_alloc` only. */
    TagReading read(const std::filesystem::path& file) override;
    /** The picture inside; empty without one. */
    EmbeddedPicture picture(const std::filesystem::path& file);
};

}  // namespace helmo
