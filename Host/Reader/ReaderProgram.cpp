#include "Host/Reader/ReaderProgram.h"

#include "Host/Log.h"

namespace helmo {

std::shared_ptr<ReaderProgram> ReaderProgram::find() {
    constexpr const char* name = "helmo-reader";
    std::error_code error;
    const auto beside = std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / name;
    for (const std::filesystem::path& file :
         {beside, std::filesystem::path(HELMO_BUILT_READER), std::filesystem::path(HELMO_INSTALLED_READER)})
        if (std::filesystem::exists(file, error)) return std::make_shared<ReaderProgram>(file);
    return std::make_shared<ReaderProgram>(beside);
}

void ReaderProgram::reportUnusable(const std::string& reason) {
    if (_wasReported.exchange(true)) return;
    logLine("helmo: " + _file.string() + " can't be used (" + reason +
            "): tags and covers are not read, file names stand in");
}

}  // namespace helmo
