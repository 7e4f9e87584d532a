#include "Benchmarks/PeakMemory.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace helmo::benchmarks {

double peakMegabytes(std::vector<std::string> commandLine, const std::filesystem::path& input) {
    std::vector<char*> arguments;
    for (std::string& text : commandLine) arguments.push_back(text.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int problem =
        posix_spawn(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (problem != 0) throw std::runtime_error(commandLine.front() + " can't be started");
    int status = 0;
    rusage usage{};
    if (wait4(process, &status, 0, &usage) != process || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(commandLine.front() + " failed");
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

}  // namespace helmo::benchmarks
