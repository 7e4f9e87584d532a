#include <cstdio>
#include <exception>
#include <malloc.h>

#include "Host/HelmoApplication.h"
#include "Host/Log.h"
#include "Host/Version.h"

int main(int argumentCount, char** arguments) {
#ifdef M_ARENA_MAX
    mallopt(M_ARENA_MAX, 2);  // more would keep a megabyte each for threads that mostly wait
#endif
    const auto parsed =
        helmo::CommandLine::parse({arguments + 1, arguments + argumentCount}, helmo::version());
    if (const auto* exit = std::get_if<helmo::CommandLine::Exit>(&parsed)) {
        std::fputs(exit->text.c_str(), exit->status == 0 ? stdout : stderr);
        return exit->status;
    }
    try {
        return helmo::HelmoApplication(std::get<helmo::CommandLine>(parsed)).run();
    } catch (const std::exception& error) {
        helmo::logLine(std::string("helmo: ") + error.what());
        return 1;
    }
}
