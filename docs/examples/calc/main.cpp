// calc EXPRESSION...: prints what each expression is worth. For the tutorial.
#include "parse/Parser.h"

#include <iostream>
#include <stdexcept>

namespace {

bool print(const char* text)
{
    try {
        std::cout << Parser(text).value() << "\n";
        return true;
    } catch (const std::runtime_error& problem) {
        std::cerr << text << ": " << problem.what() << "\n";
        return false;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "usage: calc EXPRESSION...\n";
        return 2;
    }
    int nFailed = 0;
    for (int i = 1; i < argc; ++i) {
        nFailed += print(argv[i]) ? 0 : 1;
    }
    return nFailed == 0 ? 0 : 1;
}
