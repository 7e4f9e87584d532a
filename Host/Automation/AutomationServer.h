#pragma once

#include <cstdio>

#include "Host/Automation/AutomationCommands.h"
#include "Host/Automation/LineReader.h"

namespace helmo {

/** Reads commands, one a line, and answers each with exactly one line, in order, until the input ends or
   `quit`. Main thread; the main loop goes on between commands while time is real. */
class AutomationServer {
public:
    AutomationServer(AutomationTarget& target, std::FILE* input, std::FILE* output);
    /** Serves until the end; the program's exit status. */
    int run();

private:
    std::optional<LineReader::Line> nextLine();

    AutomationTarget& _target;
    AutomationCommands _commands;
    LineReader _reader;
    std::FILE* const _output;
};

}  // namespace helmo
