#include <algorithm>

#include "Fuzz/Require.h"
#include "Platform/Foundation/StringTable.h"

using zornic::StringTable;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = textOf(data, size);
    std::vector<StringTable::Problem> problems;
    const auto table = StringTable::parse(text, problems);
    const auto isLineEnd = [](char letter) { return letter == '\n' || letter == '\r'; };
    const auto lines = static_cast<std::size_t>(std::ranges::count_if(text, isLineEnd)) + 1;
    for (const auto& problem : problems)
        require(problem.line >= 1 && problem.line <= lines, "a problem names one of the lines");
    require(table.count() <= (size + 5) / 6, "no more entries than fit");

    // Whatever came before, short of an open comment, the next line is read.
    const auto isOpenComment = [](const auto& problem) {
        return problem.message == "comment without an end";
    };
    if (std::ranges::any_of(problems, isOpenComment)) return 0;
    const bool isKnown = table.textForKey("next") != nullptr;
    std::vector<StringTable::Problem> ignored;
    const auto longer = StringTable::parse(text + "\n\"next\" = \"found\";", ignored);
    const auto* found = longer.textForKey("next");
    require(found && *found == "found", "a broken line leaves the next one alone");
    require(longer.count() == table.count() + !isKnown, "and the ones before");
    return 0;
}
