#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace helmo::broken {

/** `value` in `count` bytes, most significant first. */
inline std::string bigEndian(std::uint64_t value, int count) {
    std::string bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
    return bytes;
}

/** `value` in `count` bytes, least significant first. */
inline std::string littleEndian(std::uint64_t value, int count) {
    std::string bytes;
    for (int shift = 0; shift < 8 * count; shift += 8) bytes += static_cast<char>(value >> shift);
    return bytes;
}

/** `text` with what stands at `place` written over; unchanged where it doesn't reach. */
inline std::string patched(std::string text, std::size_t place, std::string_view bytes) {
    if (place <= text.size() && bytes.size() <= text.size() - place) text.replace(place, bytes.size(), bytes);
    return text;
}

}  // namespace helmo::broken
