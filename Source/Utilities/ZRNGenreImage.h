#pragma once

#include <string>

#include "Platform/Toolkit/Image.h"

namespace zornic {

/** Identifier of the bundle with the pictures of genres, "genre-image-KEY", where the host has one. */
inline constexpr const char* ZRNHostMusicBundleIdentifier = "org.zornicui.hostmusic";

/** The host's picture for a genre of that name: of just that genre, or else of the most specific one whose
   name is part of it ("Deep House" is house). None when there is no such genre or no such picture. Main
   thread. */
Image ZRNGenreImageForGenreName(const std::string& name);

}  // namespace zornic
