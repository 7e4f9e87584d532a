#include "Benchmarks/Report.h"

#include <cstdio>
#include <fstream>

#include <nlohmann/json.hpp>

namespace helmo::benchmarks {

void printHeading() {
    std::printf("%-22s %10s %10s   %-6s %12s %12s  %s\n", "name", "value", "limit", "", "ours", "floor",
                "unit");
}

void print(const Figure& figure) {
    std::printf("%-22s %10.2f %s%9.2f   %-6s %12.3f %12.3f  %s\n", figure.name.c_str(), figure.value,
                figure.kind == Figure::Limit::AtMost ? "<" : ">", figure.limit,
                figure.isWithinLimit() ? "ok" : "MISSED", figure.ours, figure.floor, figure.unit.c_str());
    std::fflush(stdout);
}

bool writeJson(const Figures& figures, const std::filesystem::path& file) {
    auto list = nlohmann::ordered_json::array();
    for (const Figure& figure : figures)
        list.push_back({{"name", figure.name},
                        {"value", figure.value},
                        {"limit", figure.limit},
                        {"ours", figure.ours},
                        {"floor", figure.floor},
                        {"unit", figure.unit}});
    std::ofstream stream(file);
    stream << list.dump(2) << '\n';
    return static_cast<bool>(stream.flush());
}

}  // namespace helmo::benchmarks
