#pragma once

#include <cstdint>

namespace zornic {

/** A random order of `count` places that is computed for one place at a time and in both directions, so that
   shuffling a million songs costs no memory and no pause. A value. */
class ShufflePermutation {
public:
    ShufflePermutation(std::uint64_t count, std::uint64_t seed);
    /** What stands at `position`, below the count. */
    std::uint64_t indexAt(std::uint64_t position) const;
    /** Where `index`, below the count, stands. */
    std::uint64_t positionOf(std::uint64_t index) const;

private:
    std::uint64_t mixed(std::uint64_t half, unsigned round) const;
    std::uint64_t encrypted(std::uint64_t value) const;
    std::uint64_t decrypted(std::uint64_t value) const;

    std::uint64_t _count;
    std::uint64_t _seed;
    unsigned _halfBits = 1;
    std::uint64_t _halfMask = 1;
};

}  // namespace zornic
