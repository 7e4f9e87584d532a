#pragma once

#include <cstdint>
#include <string>

#include "Platform/Foundation/IndexPath.h"

namespace zornic {

/** "3:07", "1:02:45", "-0:42": seconds rounded up to whole ones in single precision. Not a number counts as
   0; beyond the range of whole numbers it is the nearest of them. Main thread. */
std::string ZRNTimeStringForDuration(double seconds);

/** "12 songs, 47 minutes", with emphasised parts between "#": the minutes only from the first on, and never
   for no songs. Main thread. */
std::string ZRNAlbumDetailFormat(std::uint64_t count, std::int64_t minutes);

/** Indices joined by dots, "0.3.2"; empty for the empty path. */
std::string _ZRNStringFromIndexPath(const IndexPath& indexPath);

/** A label template without its "#" marks. */
std::string ZRNPlainTextOfTemplate(const std::string& labelTemplate);

}  // namespace zornic
