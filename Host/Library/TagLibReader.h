#pragma once

#include "Host/Library/TagReader.h"

namespace helmo {

/** Reads tags in this process. */
class TagLibReader final : public TagReader {
public:
    TagReading read(const std::filesystem::path& file) override;
    std::string picture(const std::filesystem::path& file) override;
};

}  // namespace helmo
