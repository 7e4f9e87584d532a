#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace helmo {

/** The picture of a folder among its file names: "cover" before "folder", in any case; empty without one. */
std::string folderPicture(const std::vector<std::string>& fileNames);

/** A file's bytes; empty when it can't be read or is larger than `limit` bytes. */
std::string fileBytes(const std::filesystem::path& file, std::size_t limit);

}  // namespace helmo
