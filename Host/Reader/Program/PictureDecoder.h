#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "Host/Reader/Picture.h"

namespace helmo {

/** Whether bytes begin as a picture of a kind that can be decoded. */
bool isPictureData(std::string_view data);
/** The first few bytes of a file; fewer when it has fewer. */
std::string beginningOf(const std::filesystem::path& file);

/** Decodes a picture's bytes, upright and no larger than needed to fill `fitting`. Throws `std::bad_alloc`
   when there is not enough memory for it. */
PictureReading decodedPicture(const std::string& data, PixelSize fitting);

}  // namespace helmo
