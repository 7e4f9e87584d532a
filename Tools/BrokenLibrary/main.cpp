#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

#include <CLI/CLI.hpp>
#include <gst/gst.h>

#include "Tools/BrokenLibrary/Damage.h"

namespace {

namespace fs = std::filesystem;
using namespace helmo::broken;

constexpr std::size_t filesInFolder = 50;

std::string numbered(std::string name, std::size_t number) {
    char digits[32];
    std::snprintf(digits, sizeof digits, " %05zu", number);
    return std::move(name) + digits;
}

/** Writes files of music, whole and broken, mixed in folders, and a list of what is which. */
class LibraryWriter {
public:
    LibraryWriter(fs::path folder, std::uint64_t seed)
        : _folder(std::move(folder)), _samples((fs::create_directories(_folder), _folder)), _random(seed) {
        _manifest.open(_folder / "manifest.tsv");
    }

    void write(std::size_t good, std::size_t broken) {
        const std::size_t all = good + broken;
        for (std::size_t i = 0, goodMade = 0, brokenMade = 0; i < all; ++i)
            if ((i + 1) * good / all > goodMade)
                writeGood(i, goodMade++);
            else
                writeBroken(i, brokenMade++);
        if (!_manifest.flush()) throw std::runtime_error("writing failed");
    }

private:
    void writeGood(std::size_t place, std::size_t number) {
        const auto& sample = _samples.all()[number % _samples.all().size()];
        const std::string title = numbered("Good", number);
        put(place, title + '.' + sample.extension, goodFile(_samples, sample.extension, title), "good",
            "kept");
    }
    void writeBroken(std::size_t place, std::size_t number) {
        const Damage& damage = allDamages()[number % allDamages().size()];
        const std::string title = numbered("Broken", number);
        put(place, title + '.' + damage.extension, damage.make(_samples, _random, title), damage.name,
            nameOf(damage.outcome));
    }
    void put(std::size_t place, const std::string& name, const std::string& bytes, std::string_view kind,
             std::string_view outcome) {
        const fs::path relative = fs::path(numbered("Folder", place / filesInFolder)) / name;
        fs::create_directories((_folder / relative).parent_path());
        std::ofstream(_folder / relative, std::ios::binary) << bytes;
        _manifest << relative.string() << '\t' << kind << '\t' << outcome << '\n';
    }

    const fs::path _folder;
    const Samples _samples;
    helmo::demo::Random _random;
    std::ofstream _manifest;
};

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Makes a folder of music of which many files are broken, the same for the same seed.",
                 "make-broken-library");
    std::string folder;
    std::size_t good = 1000, broken = 2000;
    std::uint64_t seed = 1;
    app.add_option("folder", folder, "Where; what lies there under the same names is replaced")->required();
    app.add_option("--good", good, "How many whole files");
    app.add_option("--broken", broken, "How many broken ones");
    app.add_option("--seed", seed, "What chance makes of them");
    CLI11_PARSE(app, argc, argv);
    try {
        gst_init(nullptr, nullptr);
        LibraryWriter(folder, seed).write(good, broken);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make-broken-library: %s: %s\n", folder.c_str(), error.what());
        return 1;
    }
    return 0;
}
