#include "Host/Library/PictureFinder.h"

#include <algorithm>
#include <cctype>
#include <fstream>

#include "Host/Library/MediaFiles.h"

namespace helmo {

std::string folderPicture(const std::vector<std::string>& fileNames) {
    for (const std::string_view stem : {"cover", "folder"}) {
        std::string found;
        for (const std::string& name : fileNames) {
            const std::filesystem::path path(name);
            std::string lower = path.stem().string();
            std::ranges::transform(lower, lower.begin(),
                                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
            // The first by name, so that the choice doesn't hang on the order in which a disk lists its
            // files.
            if (lower == stem && isPictureFile(path) && (found.empty() || name < found)) found = name;
        }
        if (!found.empty()) return found;
    }
    return {};
}

std::string fileBytes(const std::filesystem::path& file, std::size_t limit) {
    std::ifstream stream(file, std::ios::binary);
    std::string bytes;
    std::string block(64 * 1024, '\0');
    while (stream.read(block.data(), static_cast<std::streamsize>(block.size())) || stream.gcount() > 0) {
        bytes.append(block, 0, static_cast<std::size_t>(stream.gcount()));
        if (bytes.size() > limit) return {};
    }
    return bytes;
}

}  // namespace helmo
