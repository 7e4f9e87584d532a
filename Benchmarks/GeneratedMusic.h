#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "Host/Library/TagReader.h"

namespace helmo::benchmarks {

/** Tags of a large collection as people own them: titles in several languages and scripts, more under S than
   under X, common titles many times, albums of a dozen songs, artists of a few albums. The same for the same
   seed. */
class GeneratedMusic {
public:
    explicit GeneratedMusic(std::uint32_t seed = 1) : _random(seed) {}
    /** The next track; tracks of an album come one after the other. */
    TrackTags next();

private:
    struct Language;
    std::string word(const Language& language);
    std::string words(const Language& language, int most);
    const Language& someLanguage();
    /** 0 ... below, small numbers far more often. */
    std::size_t commonly(std::size_t below);
    std::size_t evenly(std::size_t below) { return _random() % below; }
    std::string artistNamed(std::uint32_t number);
    void startAlbum();

    std::mt19937 _random;
    TrackTags _album;
    const Language* _language = nullptr;
};

}  // namespace helmo::benchmarks
