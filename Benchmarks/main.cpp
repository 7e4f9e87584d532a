#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Benchmarks/Report.h"
#include "Benchmarks/Suite.h"

using namespace helmo::benchmarks;

namespace {

/** The first name that no benchmark measures; empty when there is none. */
std::string unknownFigure(const std::vector<std::string>& names) {
    const auto isMeasured = [](const std::string& name) {
        return std::ranges::any_of(allBenchmarks(), [&](const Benchmark& benchmark) {
            return std::ranges::find(benchmark.figures, name) != benchmark.figures.end();
        });
    };
    const auto unknown = std::ranges::find_if_not(names, isMeasured);
    return unknown == names.end() ? std::string() : *unknown;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    CLI::App app("Measures helmo against small programs that do only the necessary work.", "benchmark");
    std::string json;
    std::vector<std::string> wanted;
    app.add_option("--json", json, "Write the figures to this file as well")->type_name("FILE");
    app.add_option("names", wanted, "Figures to measure; all when none is named")->type_name("NAME");
    CLI11_PARSE(app, argumentCount, arguments);
    const auto isWanted = [&](const std::string& name) {
        return wanted.empty() || std::ranges::find(wanted, name) != wanted.end();
    };
    if (const std::string unknown = unknownFigure(wanted); !unknown.empty()) {
        std::fprintf(stderr, "benchmark: no figure is called %s\n", unknown.c_str());
        return 2;
    }
    Figures figures;
    printHeading();
    for (const Benchmark& benchmark : allBenchmarks()) {
        if (std::ranges::none_of(benchmark.figures, isWanted)) continue;
        for (const Figure& figure : benchmark.measure()) {
            print(figure);
            figures.push_back(figure);
        }
    }
    if (!json.empty() && !writeJson(figures, json)) {
        std::fprintf(stderr, "benchmark: %s can't be written\n", json.c_str());
        return 2;
    }
    return std::ranges::all_of(figures, &Figure::isWithinLimit) ? 0 : 1;
}
