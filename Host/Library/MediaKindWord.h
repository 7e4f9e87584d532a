#pragma once

#include <cstdint>
#include <string_view>

namespace helmo {

/** The kind of media that a word stands for as a genre, as a folder's name or in a tag made for it, in any
   case, with or without blanks and accents: "Audiobooks", "Hörbücher". 0 for any other. */
std::int64_t mediaKindOfWord(std::string_view word);

}  // namespace helmo
