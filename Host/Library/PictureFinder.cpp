#include "Host/Library/PictureFinder.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <string_view>

#include "Host/Library/MediaFiles.h"

namespace helmo {

std::string folderPicture(const std::vector<std::string>& fileNames) {
    const auto isCalled = [](std::string_view name, std::string_view stem) {
        return name.rfind('.') == stem.size() &&
               std::ranges::equal(name.substr(0, stem.size()), stem, {},
                                  [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    };
    for (const std::string_view stem : {"cover", "folder"}) {
        std::string_view found;
        // The first by name, so that the choice doesn't hang on the order in which a disk lists its files.
        for (const std::string& name : fileNames)
            if (isCalled(name, stem) && isPictureFile(name) && (found.empty() || name < found)) found = name;
        if (!found.empty()) return std::string(found);
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
