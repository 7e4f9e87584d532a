#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace helmo {

/** What a file says of itself that tells whose album it is part of. */
struct AlbumFile {
    std::string artist, sortArtist;
    /** As its own tags name it; empty when they don't. */
    std::string albumArtist, sortAlbumArtist;
    /** By its own tags. */
    bool isCompilation = false;
    /** Not a spoken word. */
    bool isMusic = true;
    std::int64_t disc = 0, number = 0;
};

/** Whose an album is. */
struct AlbumOwner {
    /** The album artist; empty for nobody. */
    std::string name, sortName;
    bool isCompilation = false;
    /** Whether the name tells albums of one title apart: nobody's and "Various Artists"' are told apart by
       where they lie. */
    bool isSomebody() const;
};

/** Sorts files that lie together under one album title into albums, of which there mostly is one.

   - Files that name an album artist are that one's, and a compilation when at least half of them say so.
   - The others join them: those by one of these artists him, the rest the one with the most files.
   - Where none names any, it is a compilation when at least half of the files say so; else the artist's with
     more than half of the files, at least three; else, for music, a compilation of three artists or more, or
     of two with two files each; else each file is its artist's. "Ann feat. Bob" is Ann, and so is "Ann & Bob"
     beside Ann.
   - An artist with at least three files whose numbers are for the most part those of others' files too has an
     album of that name himself: numbers begin anew. */
struct AlbumDecision {
    std::vector<AlbumOwner> albums;
    /** For each file the album it belongs to. */
    std::vector<std::size_t> albumOfFile;
    /** What the files don't agree upon, and what is made of it; empty when they do. */
    std::string contradiction;

    /** Of files in the order of the album, which breaks ties. Not none. */
    static AlbumDecision of(const std::vector<AlbumFile>& files);
};

}  // namespace helmo
