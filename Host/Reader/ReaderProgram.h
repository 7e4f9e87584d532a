#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

namespace helmo {

/** Where the program is that reads music and pictures for helmo. Any thread. */
class ReaderProgram {
public:
    /** How long it may take for one file. */
    static constexpr std::chrono::milliseconds usualLimit = std::chrono::seconds(10);

    explicit ReaderProgram(std::filesystem::path file, std::chrono::milliseconds limit = usualLimit)
        : _file(std::move(file)), _limit(limit) {}
    /** The one beside the running program, else where it was built, else where it was installed. */
    static std::shared_ptr<ReaderProgram> find();

    const std::filesystem::path& file() const { return _file; }
    std::chrono::milliseconds limit() const { return _limit; }
    /** Says, once, that nothing can be read and why. */
    void reportUnusable(const std::string& reason);

private:
    const std::filesystem::path _file;
    const std::chrono::milliseconds _limit;
    std::atomic<bool> _wasReported{false};
};

}  // namespace helmo
