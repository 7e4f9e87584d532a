#include "Platform/Media/ShufflePermutation.h"

#include <utility>

namespace zornic {

namespace {

/** Enough that short lists, whose halves are a bit or two wide, look random as well. */
constexpr unsigned rounds = 8;

std::uint64_t scrambled(std::uint64_t value) {
    value += 0x9e3779b97f4a7c15U;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31);
}

}  // namespace

// A Feistel network permutes the next power of four. A value that falls outside the list is permuted again
// until it falls inside, which keeps it a permutation and takes fewer than four turns on average.
ShufflePermutation::ShufflePermutation(std::uint64_t count, std::uint64_t seed) : _count(count), _seed(seed) {
    while (_halfBits < 32 && (std::uint64_t(1) << (2 * _halfBits)) < count) ++_halfBits;
    _halfMask = (std::uint64_t(1) << _halfBits) - 1;
}

std::uint64_t ShufflePermutation::indexAt(std::uint64_t position) const {
    if (position >= _count) return position;
    do position = encrypted(position);
    while (position >= _count);
    return position;
}

std::uint64_t ShufflePermutation::positionOf(std::uint64_t index) const {
    if (index >= _count) return index;
    do index = decrypted(index);
    while (index >= _count);
    return index;
}

std::uint64_t ShufflePermutation::mixed(std::uint64_t half, unsigned round) const {
    return scrambled(scrambled(_seed + round) ^ half) & _halfMask;
}

std::uint64_t ShufflePermutation::encrypted(std::uint64_t value) const {
    auto left = value >> _halfBits, right = value & _halfMask;
    for (unsigned round = 0; round < rounds; ++round) left = std::exchange(right, left ^ mixed(right, round));
    return left << _halfBits | right;
}

std::uint64_t ShufflePermutation::decrypted(std::uint64_t value) const {
    auto left = value >> _halfBits, right = value & _halfMask;
    for (unsigned round = rounds; round-- > 0;) right = std::exchange(left, right ^ mixed(left, round));
    return left << _halfBits | right;
}

}  // namespace zornic
