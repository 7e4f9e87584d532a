#include "Benchmarks/PeakMemory.h"

#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace helmo::benchmarks {

namespace {

/** Megabytes, as the system has noted them since the program began. */
double peakOf(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    constexpr std::string_view key = "VmHWM:";
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(key)) return std::stod(line.substr(key.size())) / 1024;
    return 0;
}

pid_t started(std::vector<std::string>& commandLine, int input, int output) {
    std::vector<char*> arguments;
    for (std::string& text : commandLine) arguments.push_back(text.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t process = 0;
    const int problem =
        posix_spawn(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (problem != 0) throw std::runtime_error(commandLine.front() + " can't be started");
    return process;
}

}  // namespace

double peakMegabytes(std::vector<std::string> commandLine, const std::string& line) {
    int input[2], output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipes to " + commandLine.front());
    const pid_t process = started(commandLine, input[0], output[1]);
    close(input[0]);
    close(output[1]);
    char answer = 0;
    const std::string said = line + '\n';
    const bool isAnswered = write(input[1], said.data(), said.size()) == static_cast<ssize_t>(said.size()) &&
                            read(output[0], &answer, 1) == 1;
    const double peak = peakOf(process);
    close(input[1]);
    // What is left of the answer is taken, or the program would wait to tell it.
    while (read(output[0], &answer, 1) == 1) continue;
    close(output[0]);
    waitpid(process, nullptr, 0);
    if (!isAnswered || peak <= 0) throw std::runtime_error(commandLine.front() + " doesn't answer");
    return peak;
}

}  // namespace helmo::benchmarks
