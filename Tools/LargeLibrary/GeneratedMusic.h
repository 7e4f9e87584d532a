#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "Host/Library/TagReader.h"

namespace helmo::large {

/** Tags of a large collection as people own them: titles in several languages and scripts, more under S than
   under X, common titles many times, albums of a dozen songs, artists of a few albums; a few compilations and
   audiobooks among them. The same for the same seed. */
class GeneratedMusic {
public:
    explicit GeneratedMusic(std::uint32_t seed = 1) : _random(seed) {}
    /** The next track; tracks of an album come one after the other. */
    TrackTags next();
    /** A name of one to three words, as of a playlist. */
    std::string name() { return words(someLanguage(), 3); }
    std::size_t evenly(std::size_t below) { return _random() % below; }

private:
    struct Language;
    std::string word(const Language& language);
    std::string words(const Language& language, int most);
    const Language& someLanguage();
    /** 0 ... below, small numbers far more often. */
    std::size_t commonly(std::size_t below);
    std::string artistNamed(std::uint32_t number);
    std::string someArtist();
    void startAlbum();

    std::mt19937 _random;
    TrackTags _album;
    const Language* _language = nullptr;
};

}  // namespace helmo::large
