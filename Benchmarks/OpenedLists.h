#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace helmo::benchmarks {

/** A list of the large library that is opened by a tap, and what SQLite is asked for it at least. */
struct OpenedList {
    /** Of the figure, behind "open_". */
    std::string name;
    /** The tab: by the host's name, and of which screen. */
    std::string tab;
    const char* screen = nullptr;
    /** SQL for the place, within the tab's list, of the row that opens it; empty: the tab itself does. */
    std::string row;
    /** SQL for the number of rows, and for what a screen of them shows, in their order. */
    std::string count, rows;
};

/** Names of all tabs' lists, and of those behind their longest rows. */
const std::vector<std::string>& openedLists();
/** The list of that name. Its statements hold row numbers of this very database. */
OpenedList openedList(const std::filesystem::path& database, const std::string& name);

}  // namespace helmo::benchmarks
