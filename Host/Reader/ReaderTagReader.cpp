#include "Host/Reader/ReaderTagReader.h"

#include <algorithm>
#include <deque>
#include <thread>
#include <vector>

#include "Host/Reader/ReaderConversation.h"

namespace helmo {

namespace {

/** More readers would only take the processor from drawing and sound. */
constexpr unsigned maximumReaders = 2;
/** A further reader is worth its start when the others have so much to do. */
constexpr std::size_t enoughForOne = 8;

class ReaderTagStream final : public TagStream {
public:
    explicit ReaderTagStream(const std::shared_ptr<ReaderProgram>& program) {
        const auto count = std::clamp(std::thread::hardware_concurrency(), 1u, maximumReaders);
        for (unsigned at = 0; at < count; ++at)
            _readers.push_back(std::make_unique<ReaderConversation>(program, ReaderRole::Tags));
    }

    void ask(const std::filesystem::path& file) override {
        ReaderConversation& reader = freest();
        reader.ask({0, ReaderRequest::Kind::Tags, file.string(), {}});
        _order.push_back(&reader);
    }
    std::optional<TagReading> take(bool wait) override {
        if (_order.empty()) return std::nullopt;
        if (wait)
            for (const auto& reader : _readers) reader->flush();
        auto answer = _order.front()->take(wait);
        if (!answer) return std::nullopt;
        _order.pop_front();
        if (answer->reply) return std::move(std::get<TagReading>(answer->reply->reading));
        const bool isTrack = answer->failure.empty();
        TagReading reading{{}, std::move(answer->failure), isTrack};
        reading.tags.mediaType = 0;
        return reading;
    }
    std::size_t pending() const override { return _order.size(); }

private:
    ReaderConversation& freest() {
        ReaderConversation* best = _readers.front().get();
        if (best->pending() < enoughForOne) return *best;
        for (const auto& reader : _readers)
            if (reader->pending() < best->pending()) best = reader.get();
        return *best;
    }

    std::vector<std::unique_ptr<ReaderConversation>> _readers;
    /** Who was asked for each reading that was not handed out. */
    std::deque<ReaderConversation*> _order;
};

}  // namespace

TagReading ReaderTagReader::read(const std::filesystem::path& file) {
    ReaderTagStream stream(_program);
    stream.ask(file);
    return *stream.take(true);
}

std::unique_ptr<TagStream> ReaderTagReader::stream() { return std::make_unique<ReaderTagStream>(_program); }

}  // namespace helmo
