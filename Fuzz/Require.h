#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/** What every target defines: reads one input. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline std::string textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/** Makes what does not hold a finding. */
inline void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/** Whether it is a single line without control characters, as a log shows it. */
inline bool isOneLine(const std::string& text) {
    for (const char letter : text)
        if (static_cast<unsigned char>(letter) < ' ') return false;
    return true;
}
