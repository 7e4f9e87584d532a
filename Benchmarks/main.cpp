#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Benchmarks/Report.h"
#include "Benchmarks/Suite.h"

using namespace helmo::benchmarks;

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
