#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "Tools/DemoLibrary/Catalogue.h"

namespace helmo::demo {

/** Where albums and tracks lie inside the library: Artist/Album/NN Title.ext, or D-NN on albums of several
   discs; what is spoken lies so in Audiobooks/, Podcasts/ and Lectures/. */
class FileNames {
public:
    static std::filesystem::path folderOf(const Album& album);
    static std::filesystem::path fileOf(const Album& album, std::size_t index, Format format);
    /** A title as a name that every usual file system takes: at most 120 bytes, never empty or hidden. */
    static std::string sanitized(std::string_view title);
};

}  // namespace helmo::demo
