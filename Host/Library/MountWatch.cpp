#include "Host/Library/MountWatch.h"

#include <array>
#include <fcntl.h>
#include <sstream>

namespace helmo {

namespace {

namespace fs = std::filesystem;

/** A name of the table: blanks and backslashes are written as octal numbers. */
std::string decoded(const std::string& text) {
    const auto isOctal = [](char digit) { return digit >= '0' && digit <= '7'; };
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isNumber = text[at] == '\\' && at + 3 < text.size() && isOctal(text[at + 1]) &&
                              isOctal(text[at + 2]) && isOctal(text[at + 3]);
        if (!isNumber) {
            plain += text[at];
            continue;
        }
        const int number = (text[at + 1] - '0') * 64 + (text[at + 2] - '0') * 8 + (text[at + 3] - '0');
        plain += static_cast<char>(number);
        at += 3;
    }
    return plain;
}

/** Whether it may be a medium, to which a link among the music may lead. */
bool isDisk(const std::string& source) {
    return source.starts_with("/dev/") && !source.starts_with("/dev/loop");
}

std::string contentOf(int file) {
    std::string content;
    std::array<char, 4096> part;
    ::lseek(file, 0, SEEK_SET);
    for (ssize_t length = 0; (length = ::read(file, part.data(), part.size())) > 0;)
        content.append(part.data(), static_cast<std::size_t>(length));
    return content;
}

}  // namespace

MountWatch::MountWatch(std::vector<fs::path> roots, const fs::path& table)
    : _roots(std::move(roots)), _table(::open(table.c_str(), O_RDONLY | O_CLOEXEC)), _mounts(read()) {}

MountWatch::Mounts MountWatch::read() const {
    Mounts mounts;
    std::istringstream lines(_table ? contentOf(_table.number()) : std::string());
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string number, parent, device, part, place, field, source;
        fields >> number >> parent >> device >> part >> place;
        // The rest has as many fields as it likes up to a dash, then the kind and the source.
        while (fields >> field && field != "-") {
        }
        if (fields >> field >> source) mounts[{number, decoded(place)}] = decoded(source);
    }
    return mounts;
}

ScanScope MountWatch::takeChanges() {
    ScanScope changes;
    auto mounts = read();
    for (const auto& [mount, source] : mounts) {
        if (_mounts.contains(mount)) continue;
        const ScanScope inside = partOfRoots(mount.second);
        changes.add(inside);
        if (inside.isEmpty() && isDisk(source)) changes.addEverything();
    }
    for (const auto& [mount, source] : _mounts)
        if (!mounts.contains(mount)) changes.add(partOfRoots(mount.second));
    _mounts.swap(mounts);
    return changes;
}

ScanScope MountWatch::partOfRoots(const fs::path& place) const {
    ScanScope part;
    for (const auto& root : _roots) {
        std::error_code error;
        const fs::path real = fs::weakly_canonical(root, error);
        if (error) continue;
        if (isWithin(real, place))
            part.addTree(root);
        else if (isWithin(place, real))
            part.addTree(root / place.lexically_relative(real));
    }
    return part;
}

}  // namespace helmo
