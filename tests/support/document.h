#pragma once

#include "support/temporary_folder.h"

#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace kirolane::tests {

/// The tables' rows of so many cells in a document of docs, without the tables' heads and the marks of code.
inline std::vector<std::vector<std::string>> DocumentRows(const std::string& name, std::size_t columns) {
    std::vector<std::vector<std::string>> rows;
    std::istringstream text(ReadFile(KIROLANE_DOCUMENTS "/" + name));
    for (std::string line; std::getline(text, line);) {
        static const std::regex cell(R"(\| *([^|]*?) *(?=\|))");
        std::vector<std::string> cells;
        for (std::sregex_iterator it(line.begin(), line.end(), cell); it != std::sregex_iterator(); ++it)
            cells.push_back(std::regex_replace((*it)[1].str(), std::regex("`"), ""));
        if (cells.size() != columns)
            continue;
        if (cells[0].starts_with("---"))
            rows.pop_back(); // what stands above is the head
        else
            rows.push_back(cells);
    }
    return rows;
}

} // namespace kirolane::tests
