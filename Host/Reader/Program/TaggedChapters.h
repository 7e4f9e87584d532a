#pragma once

#include <vector>

#include "Host/Reader/Program/ChapterList.h"

namespace TagLib {
class File;
class PropertyMap;
}  // namespace TagLib

namespace helmo {

/** The chapters that a file's tags hold: frames of an ID3v2 tag, those in its table of contents where there
   is one, or comments "CHAPTER001=00:05:12.500". In the order of the file. */
std::vector<FoundChapter> taggedChapters(TagLib::File& file, const TagLib::PropertyMap& properties);

}  // namespace helmo
