#include "Host/Automation/AnsweredLine.h"

#include "Host/Automation/CommandArguments.h"

namespace helmo {

using nlohmann::json;

namespace {

json answerOf(const std::string& line, const CommandHandler& handler) {
    const json command = json::parse(line, nullptr, false);
    if (command.is_discarded()) throw CommandError("The line is no JSON.");
    if (!command.is_object()) throw CommandError("The line is no JSON object.");
    json answer = handler(CommandArguments(command).text("do"), command);
    if (answer.is_null()) answer = json::object();
    answer["ok"] = true;
    return answer;
}

}  // namespace

std::string answeredLine(const std::string& line, const CommandHandler& handler) {
    json answer;
    try {
        answer = answerOf(line, handler);
    } catch (const std::exception& error) {
        answer = {{"ok", false}, {"error", error.what()}};
    }
    return answer.dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace helmo
