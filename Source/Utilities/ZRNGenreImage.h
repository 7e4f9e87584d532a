#pragma once

#include <string>
#include <vector>

#include "Platform/Toolkit/Image.h"

namespace zornic {

/** Identifier of the bundle with the pictures of genres, "genre-image-KEY", where the host has one. */
inline constexpr const char* ZRNHostMusicBundleIdentifier = "org.zornicui.hostmusic";

/** The host's picture for a genre of that name: of just that genre, or else of the most specific one whose
   name is part of it ("Deep House" is house). None when there is no such genre or no such picture. Main
   thread. */
Image ZRNGenreImageForGenreName(const std::string& name);
/** Names of all the pictures that genres can have, in order: what a host that brings them has to draw. */
std::vector<std::string> ZRNGenreImageNames();

}  // namespace zornic
