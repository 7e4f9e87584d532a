#include "Host/Automation/CommandArguments.h"

#include <cmath>

namespace helmo {

using nlohmann::json;

namespace {

std::string shortened(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

}  // namespace

const json& CommandArguments::required(const char* name) const {
    const auto found = _command.find(name);
    if (found == _command.end()) throw CommandError(std::string("\"") + name + "\" is missing.");
    return *found;
}

std::string CommandArguments::text(const char* name) const {
    const json& value = required(name);
    if (!value.is_string()) throw CommandError(std::string("\"") + name + "\" must be a text.");
    return value.get<std::string>();
}

double CommandArguments::number(const char* name, double lowest, double highest) const {
    const json& value = required(name);
    const double number = value.is_number() ? value.get<double>() : std::nan("");
    if (!(number >= lowest && number <= highest))
        throw CommandError(std::string("\"") + name + "\" must be a number from " + shortened(lowest) +
                           " to " + shortened(highest) + ".");
    return number;
}

double CommandArguments::number(const char* name, double lowest, double highest, double fallback) const {
    return has(name) ? number(name, lowest, highest) : fallback;
}

bool CommandArguments::truth(const char* name, bool fallback) const {
    if (!has(name)) return fallback;
    const json& value = required(name);
    if (!value.is_boolean()) throw CommandError(std::string("\"") + name + "\" must be true or false.");
    return value.get<bool>();
}

zornic::Point CommandArguments::point(const char* name) const {
    const json& value = required(name);
    if (!value.is_array() || value.size() != 2 || !value[0].is_number() || !value[1].is_number())
        throw CommandError(std::string("\"") + name + "\" must be a point, [x, y].");
    return {value[0].get<double>(), value[1].get<double>()};
}

}  // namespace helmo
