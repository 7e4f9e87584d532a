#include "Benchmarks/WindowProgram.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace helmo::benchmarks {

namespace {

constexpr int probeDescriptor = 9;

std::int64_t now() { return std::chrono::steady_clock::now().time_since_epoch().count(); }

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

std::vector<std::string> probedEnvironment() {
    std::vector<std::string> result;
    for (char** variable = environ; *variable; ++variable) result.emplace_back(*variable);
    result.emplace_back("SDL_VIDEODRIVER=dummy");
    result.emplace_back("LD_PRELOAD=" HELMO_FRAME_PROBE_LIBRARY);
    result.emplace_back("HELMO_FRAME_PROBE=" + std::to_string(probeDescriptor));
    return result;
}

}  // namespace

WindowProgram::WindowProgram(const std::vector<std::string>& commandLine) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe to a window program");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], probeDescriptor);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    auto arguments = commandLine, environment = probedEnvironment();
    _start = now();
    const int problem = posix_spawn(&_process, arguments.front().c_str(), &actions, nullptr,
                                    pointers(arguments).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    _frames = ends[0];
    if (problem != 0) throw std::runtime_error(commandLine.front() + " can't be started");
}

WindowProgram::~WindowProgram() {
    kill(_process, SIGTERM);
    waitpid(_process, nullptr, 0);
    close(_frames);
}

std::optional<WindowProgram::Duration> WindowProgram::nextFrame(Duration limit) {
    pollfd ready{_frames, POLLIN, 0};
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(limit).count();
    std::int64_t time = 0;
    if (poll(&ready, 1, static_cast<int>(milliseconds)) != 1) return std::nullopt;
    if (read(_frames, &time, sizeof time) != sizeof time) return std::nullopt;
    return Duration(time - _start);
}

std::int64_t WindowProgram::sleeps() const {
    const std::string process = std::to_string(_process);
    std::ifstream status("/proc/" + process + "/task/" + process + "/status");
    constexpr std::string_view key = "voluntary_ctxt_switches:";
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(key)) return std::stoll(line.substr(key.size()));
    return 0;
}

}  // namespace helmo::benchmarks
