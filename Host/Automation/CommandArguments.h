#pragma once

#include <stdexcept>
#include <string>

#include <nlohmann/json.hpp>

#include "Platform/Toolkit/Geometry.h"

namespace helmo {

/** A command that can't be done, and why, as a sentence. Thrown and caught within automation. */
class CommandError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/** Reads a command's fields; what is missing or of the wrong kind is a CommandError that names it. */
class CommandArguments {
public:
    explicit CommandArguments(const nlohmann::json& command) : _command(command) {}

    bool has(const char* name) const { return _command.contains(name); }
    std::string text(const char* name) const;
    /** Within the limits; `fallback` when it is missing. */
    double number(const char* name, double lowest, double highest) const;
    double number(const char* name, double lowest, double highest, double fallback) const;
    bool truth(const char* name, bool fallback) const;
    zornic::Point point(const char* name) const;

private:
    const nlohmann::json& required(const char* name) const;
    const nlohmann::json& _command;
};

}  // namespace helmo
