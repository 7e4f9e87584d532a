#include <cmath>
#include <cstdio>
#include <iterator>
#include <optional>
#include <unistd.h>

#include "Fuzz/Require.h"
#include "Host/Automation/AnsweredLine.h"
#include "Host/Automation/CommandArguments.h"
#include "Host/Automation/CommandRequests.h"
#include "Host/Automation/LineReader.h"

using nlohmann::json;

namespace {

bool isTime(double seconds, double longest) { return seconds >= 0 && seconds <= longest; }

/** Reads each command's fields as the commands do, and carries none out. */
json checked(const std::string& name, const json& command) {
    const helmo::CommandArguments arguments(command);
    if (name == "tap") {
        const helmo::TapRequest tap(command);
        require(isTime(tap.hold, helmo::longestTime), "a tap ends");
        require(tap.text || (std::isfinite(tap.point.x) && std::isfinite(tap.point.y)), "a tap has a place");
    } else if (name == "drag") {
        const helmo::DragRequest drag(command);
        require(isTime(drag.seconds, 600), "a drag ends");
        require(std::isfinite(drag.from.x + drag.from.y + drag.to.x + drag.to.y), "a drag has its places");
    } else if (name == "knob") {
        const helmo::KnobRequest knob(command);
        require(std::abs(knob.turn) <= knob.mostDetents && isTime(knob.hold, helmo::longestTime),
                "a turn ends");
        require(knob.turn != 0 || knob.press, "the knob does something");
    } else if (name == "advance") {
        const double seconds = arguments.number("seconds", 0, helmo::longestTime);
        require(isTime(seconds, helmo::longestTime), "time has a limit");
    } else {
        return {{"text", arguments.text("text")}};  // sent back as it came, as a song's title is
    }
    return nullptr;
}

void requireGoodAnswer(const std::string& line) {
    const std::string text = helmo::answeredLine(line, checked);
    require(text.find('\n') == std::string::npos, "an answer is one line");
    const json answer = json::parse(text, nullptr, false);
    require(answer.is_object() && answer["ok"].is_boolean(),
            "an answer is an object that says whether it was done");
    require(answer["ok"] == true || answer["error"].get<std::string>().ends_with('.'),
            "a refusal is a sentence");
}

/** An input as helmo's own, for one program's life: a reader has a thread of its own. */
class Input {
public:
    Input() {
        int ends[2];
        require(::pipe(ends) == 0, "a pipe can be made");
        _end = ends[1];
        _reader.emplace(::fdopen(ends[0], "r"));
    }
    void write(const std::string& bytes) {
        require(::write(_end, bytes.data(), bytes.size()) == std::ssize(bytes), "a pipe takes an input");
    }
    helmo::LineReader::Line next() { return _reader->next().value(); }

private:
    int _end = -1;
    std::optional<helmo::LineReader> _reader;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Input input;
    const std::string bytes = textOf(data, size) + "\n";
    input.write(bytes);
    std::string together;
    while (together.size() < bytes.size()) {
        const auto line = input.next();
        require(!line.tooLong && line.text.find('\n') == std::string::npos, "a line is a line");
        requireGoodAnswer(line.text);
        together += line.text + "\n";
    }
    require(together == bytes, "no byte is lost between the lines");
    return 0;
}
