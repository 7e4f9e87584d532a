#pragma once

#include <memory>

#include "Host/Library/TagReader.h"
#include "Host/Reader/ReaderProgram.h"

namespace helmo {

/** Reads tags in processes of their own. A stream runs up to two of them, as long as it lives: the files at
   which one crashed, hung or grew too large are no tracks and say so, all others are read. Without a program
   that can be run every reading is empty. */
class ReaderTagReader final : public TagReader {
public:
    explicit ReaderTagReader(std::shared_ptr<ReaderProgram> program) : _program(std::move(program)) {}

    TagReading read(const std::filesystem::path& file) override;
    std::unique_ptr<TagStream> stream() override;

private:
    const std::shared_ptr<ReaderProgram> _program;
};

}  // namespace helmo
