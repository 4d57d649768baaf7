// SPDX-License-Identifier: MIT
//
// Reads symbols, one on each line; several with blanks between them are the instances of one
// function. Prints for each line what a map stores and what the three levels of the function report
// and the class report show: stored, simple, with types, with qualifiers, class, template's name,
// with tabs between them. --full-names: no argument list is left out.
#include "tests/support/reportedName.h"
#include "tools/common/FunctionName.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <sstream>
#include <string>

int main(int argc, char** argv)
{
    NameStyle style;
    style._isFull = argc > 1 && std::strcmp(argv[1], "--full-names") == 0;
    ImportLosses losses;
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        std::vector<std::string> symbols;
        for (std::string symbol; words >> symbol;) {
            symbols.push_back(symbol);
        }
        if (symbols.empty()) {
            continue;
        }
        std::sort(symbols.begin(), symbols.end());
        const std::string stored = storedFunctionName(symbols, style, losses);
        std::cout << stored;
        for (int mode = -1; mode <= 1; ++mode) {
            std::cout << '\t' << reportedName(stored, mode);
        }
        std::cout << '\t' << reportedClass(stored) << '\t' << templateName(symbols.front()) << '\n';
    }
    losses.write(std::cerr);
    return 0;
}
