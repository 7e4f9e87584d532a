#include "Host/Automation/AutomationServer.h"

namespace helmo {

using namespace zornic;

AutomationServer::AutomationServer(AutomationTarget& target, std::FILE* input, std::FILE* output)
    : _target(target), _commands(target), _reader(input), _output(output) {}

std::optional<LineReader::Line> AutomationServer::nextLine() {
    if (_target.virtualClock()) return _reader.next();
    while (!_reader.ended()) {
        auto line = _reader.next(toDuration(TimeDriver::frameInterval));
        if (line) return line;
        auto& loop = _target.runLoop();
        loop.runDue();
        if (loop.wantsFrames()) loop.fireFrame();
        _target.drawFrame();
    }
    return std::nullopt;
}

int AutomationServer::run() {
    _commands.time().settle();
    while (!_commands.wantsToQuit()) {
        const auto line = nextLine();
        if (!line) break;
        const std::string answer =
            line->tooLong ? R"({"error":"The line is too long.","ok":false})" : _commands.answer(line->text);
        std::fputs((answer + "\n").c_str(), _output);
        std::fflush(_output);
    }
    return 0;
}

}  // namespace helmo
