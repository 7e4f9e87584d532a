#pragma once

#include <map>

#include <tpropertymap.h>

#include "Host/Reader/Program/TagLibReader.h"
#include "Tests/HostThreads/ScanFixture.h"
#include "Tests/Support/SoundFiles.h"

namespace helmo {

using Properties = std::map<std::string, std::string>;

/** Reads as usual and counts. */
class CountingReader final : public TagReader {
public:
    TagReading read(const fs::path& file) override {
        ++reads;
        return _reader.read(file);
    }
    std::atomic<int> reads{0};

private:
    TagLibReader _reader;
};

/** A music folder of real files with real tags. */
class TaggedScanFixture : public ScanFixture<CountingReader> {
protected:
    template <class File>
    fs::path tagged(const fs::path& name, const std::string& bytes, const Properties& properties) {
        TagLib::PropertyMap map;
        for (const auto& [key, value] : properties)
            map.insert(key, TagLib::String(value, TagLib::String::UTF8));
        const fs::path path = write(name, bytes);
        File file(path.c_str());
        file.setProperties(map);
        EXPECT_TRUE(file.save()) << path;
        return path;
    }
};

}  // namespace helmo
