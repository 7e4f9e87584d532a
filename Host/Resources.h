#pragma once

#include <filesystem>
#include <optional>

namespace helmo {

/** Where texts and images are: the folder asked for, else beside the sources, else where they were installed;
   nullopt when there are none. */
std::optional<std::filesystem::path> findResources(const std::optional<std::filesystem::path>& wanted);
/** Makes them known as the bundles of the library, of the platform and of the host's pictures of genres. */
void registerResources(const std::filesystem::path& folder);

}  // namespace helmo
