#pragma once

#include <functional>
#include <string>

#include <nlohmann/json.hpp>

namespace helmo {

/** Does the command called `name`; what it answers beside "ok", or null. May throw, a CommandError for one.
 */
using CommandHandler = std::function<nlohmann::json(const std::string& name, const nlohmann::json& command)>;

/** The one line, without its end, that answers a line of input. Never throws: what `handler` threw, and a
   line that is no command, is answered with a sentence. */
std::string answeredLine(const std::string& line, const CommandHandler& handler);

}  // namespace helmo
