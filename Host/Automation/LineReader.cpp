#include "Host/Automation/LineReader.h"

namespace helmo {

struct LineReader::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Line> lines;
    bool ended = false;

    void put(Line line) {
        const std::lock_guard lock(mutex);
        lines.push_back(std::move(line));
        changed.notify_all();
    }
    std::optional<Line> take() {
        if (lines.empty()) return std::nullopt;
        Line line = std::move(lines.front());
        lines.pop_front();
        return line;
    }
};

LineReader::LineReader(std::FILE* input) : _state(std::make_shared<State>()) {
    // A blocking read can't be called off: the thread keeps the state and ends with its input.
    std::thread([state = _state, input] {
        Line line;
        for (int byte = 0; (byte = std::fgetc(input)) != EOF;) {
            if (byte == '\n')
                state->put(std::exchange(line, {}));
            else if (line.text.size() < longestLine)
                line.text.push_back(static_cast<char>(byte));
            else
                line.tooLong = true;
        }
        if (!line.text.empty()) state->put(std::move(line));
        const std::lock_guard lock(state->mutex);
        state->ended = true;
        state->changed.notify_all();
    }).detach();
}

LineReader::~LineReader() = default;

std::optional<LineReader::Line> LineReader::next(zornic::Duration limit) {
    std::unique_lock lock(_state->mutex);
    _state->changed.wait_for(lock, limit, [&] { return !_state->lines.empty() || _state->ended; });
    return _state->take();
}

std::optional<LineReader::Line> LineReader::next() {
    std::unique_lock lock(_state->mutex);
    _state->changed.wait(lock, [&] { return !_state->lines.empty() || _state->ended; });
    return _state->take();
}

bool LineReader::ended() {
    const std::lock_guard lock(_state->mutex);
    return _state->ended && _state->lines.empty();
}

}  // namespace helmo
