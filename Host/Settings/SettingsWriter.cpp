#include "Host/Settings/SettingsWriter.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include "Host/Settings/SettingsKeys.h"
#include "Host/Settings/SettingsReader.h"

namespace helmo {

namespace {

WrittenSettings written(const SettingsValues& values) {
    WrittenSettings settings;
    for (const auto& key : settingsKeys()) settings[key.name] = key.text(values);
    return settings;
}

/** Every setting, in the order in which they are explained. */
std::string newText(const WrittenSettings& settings) {
    std::string text = "# Settings of helmo. Comments and settings of yours are kept.\n";
    for (const auto& key : settingsKeys())
        if (const auto found = settings.find(key.name); found != settings.end())
            text += found->first + " = " + found->second + "\n";
    return text;
}

class Descriptor {
public:
    Descriptor(const std::filesystem::path& path, int flags)
        : _number(::open(path.c_str(), flags | O_CLOEXEC, 0644)) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool isOpen() const { return _number >= 0; }
    bool write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const auto count = ::write(_number, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }
    bool sync() const { return ::fsync(_number) == 0; }
    bool close() { return _number < 0 || ::close(std::exchange(_number, -1)) == 0; }

private:
    int _number;
};

/** Empty, or why it failed; the file is then as it was. */
std::string replaceFile(const std::filesystem::path& file, const std::string& text) {
    const std::filesystem::path temporary = file.string() + ".new";
    Descriptor descriptor(temporary, O_WRONLY | O_CREAT | O_TRUNC);
    const bool isWritten = descriptor.isOpen() && descriptor.write(text) && descriptor.sync() &&
                           descriptor.close() && ::rename(temporary.c_str(), file.c_str()) == 0;
    if (!isWritten) {
        const std::string reason = std::strerror(errno);
        ::unlink(temporary.c_str());
        return reason;
    }
    if (const Descriptor folder(file.parent_path(), O_RDONLY | O_DIRECTORY); folder.isOpen()) folder.sync();
    return {};
}

/** A free name beside `file`: "settings.toml.broken-2024-05-01". */
std::filesystem::path nameForBroken(const std::filesystem::path& file) {
    const auto now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm parts{};
    localtime_r(&now, &parts);
    char date[32];
    std::strftime(date, sizeof date, ".broken-%Y-%m-%d", &parts);
    const auto name = file.string() + date;
    auto result = name;
    std::error_code ignored;
    for (int i = 2; std::filesystem::exists(result, ignored); ++i) result = name + "-" + std::to_string(i);
    return result;
}

}  // namespace

SettingsWriter::SettingsWriter(std::filesystem::path file, Log log)
    : _file(std::move(file)), _log(std::move(log)) {}

void SettingsWriter::write(const SettingsValues& values, const SettingsValues& before) {
    const auto old = written(before);
    std::lock_guard lock(_mutex);
    _all = written(values);
    for (const auto& [name, value] : _all)
        if (value != old.at(name)) _changes[name] = value;
    if (_changes.empty() || std::exchange(_isQueued, true)) return;
    _queue.async([this] { writePending(); });
}

void SettingsWriter::finish() {
    _queue.sync([] {});
}

void SettingsWriter::writePending() {
    WrittenSettings changes, all;
    {
        std::lock_guard lock(_mutex);
        _isQueued = false;
        changes = std::exchange(_changes, {});
        all = _all;
    }
    const auto problem = save(changes, all);
    const bool isNew = problem != std::exchange(_problem, problem);
    if (problem.empty()) return;
    if (_log && isNew) _log(_file.string() + ": can't be written: " + problem);
    std::lock_guard lock(_mutex);
    _changes.merge(changes);  // they go with the next change
}

std::string SettingsWriter::save(const WrittenSettings& changes, const WrittenSettings& all) {
    std::error_code failure;
    // Behind a link, the file that it leads to is the one to replace.
    auto file = std::filesystem::weakly_canonical(_file, failure);
    if (failure) file = _file;
    std::filesystem::create_directories(file.parent_path(), failure);
    if (failure) return failure.message();
    if (!std::filesystem::exists(file, failure))
        return failure ? failure.message() : replaceFile(file, newText(all));

    // Read anew: somebody may have edited it meanwhile.
    std::string problem;
    const auto text = settingsTextOf(file, problem);
    const bool isWhole = text && isWholeSettingsText(*text);
    if (const auto changed = isWhole ? withSettings(*text, changes) : std::nullopt)
        return replaceFile(file, *changed);
    const auto kept = nameForBroken(file);
    std::filesystem::rename(file, kept, failure);
    if (failure) return failure.message();
    if (_log)
        _log(_file.string() + (isWhole ? ": can't be changed" : ": was broken") + "; it is kept as " +
             kept.string());
    return replaceFile(file, newText(all));
}

}  // namespace helmo
