#pragma once

#include <string>

namespace helmo {

/** Writes `line` to stderr as one line, whole, whatever other threads write; line breaks and control
   characters inside are shown as blanks. Any thread. */
void logLine(std::string line);

}  // namespace helmo
