#include <cstdio>
#include <exception>

#include "Host/HelmoApplication.h"
#include "Host/Log.h"
#include "Host/Version.h"

int main(int argumentCount, char** arguments) {
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
