#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

/** A headless helmo, driven over its standard input and output. What it logs is kept, and shown when the test
    fails. */
class HelmoProcess {
public:
    /** Starts helmo with `--headless` and `arguments`; home and temporary files belong in `home`. */
    HelmoProcess(const std::vector<std::string>& arguments, const std::filesystem::path& home);
    ~HelmoProcess();
    HelmoProcess(const HelmoProcess&) = delete;
    HelmoProcess& operator=(const HelmoProcess&) = delete;

    /** Sends a command and returns its answer; a null value, and a failed test, when none comes. */
    nlohmann::json ask(const nlohmann::json& command);
    /** Sends bytes as they are. */
    void send(const std::string& bytes);
    /** The next line of output, without its end; nullopt when the output ended or none came in time. */
    std::optional<std::string> readLine();
    /** Closes its input and waits for its end: the exit status, or -1 when it did not end by itself. What it
        still wrote is appended to `rest`. */
    int finish(std::string* rest = nullptr);
    /** The lines that it logged so far. */
    std::vector<std::string> log() const;

private:
    /** Reads more output; false at its end or when none comes in time. */
    bool read();
    void closeInput();

    std::filesystem::path _log;
    int _process = -1, _input = -1, _output = -1;
    std::string _read;
};
