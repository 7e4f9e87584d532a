#pragma once

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "Platform/Toolkit/Geometry.h"

namespace helmo {

/** What a command asks for, read from its fields and checked. Making one of a command with a wrong field is a
   CommandError that names it. Values; times in seconds. */

/** More would be a mistake, and would keep the program busy for long. */
inline constexpr double longestTime = 24 * 3600;

struct TapRequest {
    enum class End { Inside, Outside, Cancel };
    explicit TapRequest(const nlohmann::json& command);

    /** What the view to tap shows; nullopt: `point` says where. */
    std::optional<std::string> text;
    zornic::Point point;
    double hold = 0;
    End end = End::Inside;
};

struct DragRequest {
    explicit DragRequest(const nlohmann::json& command);

    zornic::Point from, to;
    double seconds = 0;
};

struct KnobRequest {
    static constexpr int mostDetents = 10'000;
    explicit KnobRequest(const nlohmann::json& command);

    /** Detents, negative: anticlockwise. */
    int turn = 0;
    bool press = false;
    double hold = 0;
};

}  // namespace helmo
