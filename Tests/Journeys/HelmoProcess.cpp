#include "Tests/Journeys/HelmoProcess.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

using namespace std::chrono_literals;
using nlohmann::json;

namespace {

/** Generous: a sanitized program on a busy machine is slow, and only a hanging one takes this long. */
constexpr std::chrono::milliseconds answerLimit = 90s;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (auto& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/** The environment of the test, with folders of its own and the language in which the tests read. */
std::vector<std::string> environmentIn(const std::filesystem::path& home) {
    std::vector<std::string> result = {"HOME=" + home.string(), "TMPDIR=" + (home / "tmp").string(),
                                       "LC_ALL=C.UTF-8", "LANGUAGE=en"};
    for (char** variable = environ; *variable; ++variable) {
        const std::string text = *variable;
        const auto isReplaced = [&](const char* name) { return text.starts_with(name); };
        constexpr std::array replaced = {"HOME=", "TMPDIR=", "LC_", "LANG", "XDG_"};
        if (std::ranges::none_of(replaced, isReplaced)) result.push_back(text);
    }
    return result;
}

}  // namespace

HelmoProcess::HelmoProcess(const std::vector<std::string>& arguments, const std::filesystem::path& home)
    : _log(home / "helmo.log") {
    std::signal(SIGPIPE, SIG_IGN);
    std::filesystem::create_directories(home / "tmp");
    int toHelmo[2], fromHelmo[2];
    if (::pipe2(toHelmo, O_CLOEXEC) != 0 || ::pipe2(fromHelmo, O_CLOEXEC) != 0) std::abort();
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, toHelmo[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, fromHelmo[1], STDOUT_FILENO);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, _log.c_str(),
                                       O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
    std::vector<std::string> words = {HELMO_PROGRAM, "--headless"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    auto environment = environmentIn(home);
    const int problem = ::posix_spawn(&_process, HELMO_PROGRAM, &actions, nullptr, pointersTo(words).data(),
                                      pointersTo(environment).data());
    if (problem != 0) {
        ADD_FAILURE() << HELMO_PROGRAM << " did not start: " << std::generic_category().message(problem);
        _process = -1;
    }
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(toHelmo[0]);
    ::close(fromHelmo[1]);
    _input = toHelmo[1];
    _output = fromHelmo[0];
}

HelmoProcess::~HelmoProcess() {
    closeInput();
    ::close(_output);
    if (_process > 0) {
        ::kill(_process, SIGKILL);
        ::waitpid(_process, nullptr, 0);
    }
    if (testing::Test::HasFailure())
        for (const auto& line : log()) std::fprintf(stderr, "%s\n", line.c_str());
}

std::vector<std::string> HelmoProcess::log() const {
    std::ifstream stream(_log);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

void HelmoProcess::closeInput() {
    if (_input >= 0) ::close(std::exchange(_input, -1));
}

void HelmoProcess::send(const std::string& bytes) {
    for (std::size_t sent = 0; sent < bytes.size();) {
        const auto count = ::write(_input, bytes.data() + sent, bytes.size() - sent);
        if (count < 0) {
            ADD_FAILURE() << "helmo takes no more input";
            return;
        }
        sent += static_cast<std::size_t>(count);
    }
}

bool HelmoProcess::read() {
    pollfd waiting{_output, POLLIN, 0};
    if (::poll(&waiting, 1, static_cast<int>(answerLimit.count())) != 1) return false;
    std::array<char, 65536> buffer;
    const auto count = ::read(_output, buffer.data(), buffer.size());
    if (count <= 0) return false;
    _read.append(buffer.data(), static_cast<std::size_t>(count));
    return true;
}

std::optional<std::string> HelmoProcess::readLine() {
    for (;;) {
        if (const auto end = _read.find('\n'); end != std::string::npos) {
            std::string line = _read.substr(0, end);
            _read.erase(0, end + 1);
            return line;
        }
        if (!read()) return std::nullopt;
    }
}

json HelmoProcess::ask(const json& command) {
    send(command.dump() + "\n");
    const auto line = readLine();
    json answer = line ? json::parse(*line, nullptr, false) : json();
    if (!answer.is_object()) {
        ADD_FAILURE() << command << " was answered with " << line.value_or("nothing");
        return json();
    }
    return answer;
}

int HelmoProcess::finish(std::string* rest) {
    closeInput();
    while (read()) continue;
    if (rest) *rest += _read;
    for (const auto limit = std::chrono::steady_clock::now() + answerLimit;;) {
        int status = 0;
        if (::waitpid(_process, &status, WNOHANG) == _process) {
            _process = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        }
        if (std::chrono::steady_clock::now() > limit) return -1;
        std::this_thread::sleep_for(2ms);
    }
}
