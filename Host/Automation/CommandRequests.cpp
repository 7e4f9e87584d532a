#include "Host/Automation/CommandRequests.h"

#include <cmath>

#include "Host/Automation/CommandArguments.h"

namespace helmo {

namespace {

constexpr double longestDrag = 600;
constexpr double usualDrag = 0.25;
/** No display is that large. */
constexpr double farthest = 1e6;

TapRequest::End endNamed(const std::string& name) {
    if (name == "inside") return TapRequest::End::Inside;
    if (name == "outside") return TapRequest::End::Outside;
    if (name == "cancel") return TapRequest::End::Cancel;
    throw CommandError("\"end\" must be \"inside\", \"outside\" or \"cancel\".");
}

}  // namespace

TapRequest::TapRequest(const nlohmann::json& command) {
    const CommandArguments arguments(command);
    hold = arguments.number("hold", 0, longestTime, 0);
    if (arguments.has("end")) end = endNamed(arguments.text("end"));
    if (arguments.has("text"))
        text = arguments.text("text");
    else
        point = {arguments.number("x", -farthest, farthest), arguments.number("y", -farthest, farthest)};
}

DragRequest::DragRequest(const nlohmann::json& command) {
    const CommandArguments arguments(command);
    from = arguments.point("from");
    to = arguments.point("to");
    seconds = arguments.number("seconds", 0, longestDrag, usualDrag);
}

KnobRequest::KnobRequest(const nlohmann::json& command) {
    const CommandArguments arguments(command);
    const double detents = arguments.number("turn", -mostDetents, mostDetents, 0);
    if (detents != std::trunc(detents)) throw CommandError("\"turn\" must be a whole number of detents.");
    turn = static_cast<int>(detents);
    press = arguments.truth("press", false);
    hold = arguments.number("hold", 0, longestTime, 0);
    if (turn == 0 && !press) throw CommandError("The knob needs \"turn\" or \"press\".");
}

}  // namespace helmo
