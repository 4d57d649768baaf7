// SPDX-License-Identifier: MIT
#include "zem/Options/RptOptions.h"

#include "zem/Rows/NameLevel.h"

#include <iostream>

namespace {

// The first letter of the first argument; 0 when there is none.
char letterOf(char** args)
{
    return args[0] == nullptr ? '\0' : args[0][0];
}

} // namespace

RptOptions::~RptOptions() = default;

void RptOptions::setReportType(char** args)
{
    const char letter = letterOf(args);
    switch (letter) {
    case 'd':
        reportType(RptByDirectory);
        break;
    case 'F':
        reportType(RptByFile);
        break;
    case 'f':
        reportType(RptByFunction);
        break;
    case 'o':
        reportType(RptByClass);
        break;
    default:
        unknownLetter("Unknown report type option: -d", letter);
        reportType(RptByFile);
    }
}

void RptOptions::setManglingLevel(char** args)
{
    const char letter = letterOf(args);
    switch (letter) {
    case 's':
        manglingLevel(SimpleNames);
        break;
    case 'e':
        manglingLevel(ExtendedNames);
        break;
    case 'm':
        manglingLevel(ModifiedNames);
        break;
    default:
        if (otherManglingLetter(letter)) {
            break;
        }
        unknownLetter("Unknown mangling level option: -n", letter);
        manglingLevel(SimpleNames);
    }
}

bool RptOptions::otherManglingLetter(char)
{
    return false;
}

void RptOptions::setFilter(char** args)
{
    const char letter = letterOf(args);
    switch (letter) {
    case 'F':
    case 'd':
    case 'f':
    case 'o':
        if (args[1] == nullptr) {
            usageHelp();
        } else {
            addFilter(letter, args[1]);
        }
        break;
    default:
        // The same words as for -d; pinned by RptOptionsTest.UnknownFilterLetterAddsNothing.
        unknownLetter("Unknown report type option: -f", letter);
    }
}

void RptOptions::unknownLetter(const char* message, char letter)
{
    std::cerr << message;
    if (letter != '\0') {
        std::cerr << letter;
    }
    std::cerr << std::endl;
    usageHelp();
}

void RptOptions::writeOptionLines(std::ostream& out)
{
    out << "\n"
           "Options:\n"
           "        -df           Display by function\n"
           "        -do           Display by object/class\n"
           "        -dF           Display by file\n"
           "        -dd           Display by directory\n"
           "\n"
           "        -ns           Simple function names\n"
           "        -ne           Extended function names - include argument types\n"
           "        -nm           Include modifiers const/volatile in function arguments\n"
           "\n"
           "        -ff name      Only show things related to function \"name\"\n"
           "        -fo name      Only show things related to object \"name\"\n"
           "        -fF name      Only show things related to File \"name\"\n"
           "        -fd name      Only show things related to directory \"name\"\n"
           "\n"
           "        -s[keys]      Sort output by keys (dFf%#b)\n"
           "        -ct           Show hit counts source browser\n"
           "\n";
}
