#pragma once

#include <filesystem>

#include "Host/Library/TagReader.h"

namespace helmo {

/** What kind of media a file is: what its tags say, made for that or by their genre, else the innermost
   folder that is called like a kind, the music folder's own name included, else the file's ending or what it
   holds, else music. */
namespace MediaKind {

/** Kinds of which the position is remembered. */
inline constexpr std::int64_t spoken =
    zornic::MediaType::Podcast | zornic::MediaType::Audiobook | zornic::MediaType::Lecture;

/** Decides the kind of the file that `tags` are of and that lies in the music folder `root`. A spoken one
   that belongs to nothing, which no list would show, then belongs to its folder, or is a work of its own. */
void decide(TrackTags& tags, const std::filesystem::path& file, const std::filesystem::path& root);

}  // namespace MediaKind

}  // namespace helmo
