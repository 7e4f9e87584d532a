#pragma once

#include <algorithm>
#include <atomic>
#include <functional>

#include "Host/Library/Scanner.h"
#include "Tests/Host/LibraryFixture.h"

namespace helmo {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/** Takes every file for a song that is called as the file is, and counts. */
class NameReader : public TagReader {
public:
    TagReading read(const fs::path& file) override {
        ++reads;
        if (onRead) onRead(file);
        TagReading reading;
        reading.tags.title = file.stem().string();
        return reading;
    }
    std::atomic<int> reads{0};
    std::function<void(const fs::path&)> onRead;
};

/** A music folder that a test fills and scans with a reader of its own. */
template <class Reader>
class ScanFixture : public LibraryFixture {
protected:
    /** A file of another time, by far, than any before. */
    fs::path write(const fs::path& name, const std::string& bytes = "sound") {
        const fs::path file = music() / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::minutes(++_writes));
        return file;
    }
    static void idle() { ASSERT_TRUE(zornic::BackgroundWork::waitUntilIdle(std::chrono::seconds(100))); }
    void scanAloud(std::vector<fs::path> roots = {}) {
        if (roots.empty()) roots = {music()};
        Scanner scanner(_library, roots, _reader);
        scanner.start();
        idle();
    }
    /** Scans; what was logged. */
    std::string scan(const std::vector<fs::path>& roots = {}) {
        testing::internal::CaptureStderr();
        scanAloud(roots);
        return testing::internal::GetCapturedStderr();
    }
    static int lines(const std::string& log) { return static_cast<int>(std::ranges::count(log, '\n')); }
    std::shared_ptr<zornic::MediaItem> named(const std::string& title) const {
        return item(*query({}, {zornic::MediaPredicate::property(zornic::MediaItemProperty::Title, title)}),
                    0);
    }

    std::shared_ptr<Reader> _reader = std::make_shared<Reader>();

private:
    int _writes = 0;
};

}  // namespace helmo
