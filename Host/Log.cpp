#include "Host/Log.h"

#include <cstdio>
#include <mutex>

namespace helmo {

void logLine(std::string line) {
    for (char& character : line)
        if (static_cast<unsigned char>(character) < 0x20 || character == 0x7f) character = ' ';
    line += '\n';
    static std::mutex mutex;
    std::lock_guard lock(mutex);
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

}  // namespace helmo
