#include "Host/Library/TagReader.h"

#include <deque>
#include <utility>

namespace helmo {

namespace {

class TagStreamOneByOne final : public TagStream {
public:
    explicit TagStreamOneByOne(TagReader& reader) : _reader(reader) {}
    void ask(const std::filesystem::path& file) override { _files.push_back(file); }
    std::optional<TagReading> take(bool) override {
        if (_files.empty()) return std::nullopt;
        const auto file = std::move(_files.front());
        _files.pop_front();
        return _reader.read(file);
    }
    std::size_t pending() const override { return _files.size(); }

private:
    TagReader& _reader;
    std::deque<std::filesystem::path> _files;
};

}  // namespace

std::unique_ptr<TagStream> TagReader::stream() { return std::make_unique<TagStreamOneByOne>(*this); }

}  // namespace helmo
