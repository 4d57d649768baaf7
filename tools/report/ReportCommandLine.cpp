// SPDX-License-Identifier: MIT
#include "tools/report/ReportCommandLine.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/formats/makeReportWriter.h"

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <new>

namespace {

const char* const namesWithValue[] = {"--format", "-o", "--fail-under", "--fail-under-each",
                                      "--color"};

bool isTerminator(const char* word)
{
    return std::strcmp(word, "--") == 0 || std::strcmp(word, "-") == 0;
}

// The option that `word` is, with its value when that stands behind a '='; null for any other word.
const char* optionOf(const char* word, const char*& value)
{
    for (const char* name : namesWithValue) {
        const size_t length = std::strlen(name);
        if (std::strncmp(word, name, length) != 0) {
            continue;
        }
        if (word[length] == '\0') {
            value = nullptr;
            return name;
        }
        if (word[length] == '=' && name[1] == '-') {
            value = word + length + 1;
            return name;
        }
    }
    return nullptr;
}

// Of a word that makes no sense. Returns false.
bool refuse(const char* name, const char* value, const char* wanted)
{
    std::cerr << "zem-report: " << name << ' ' << qipVisibleText(value) << ": " << wanted
              << std::endl;
    return false;
}

bool isSet(const char* variable)
{
    const char* value = std::getenv(variable);
    return value != nullptr && value[0] != '\0';
}

} // namespace

ReportCommandLine::ReportCommandLine()
    : _hasWholeLimit(false), _hasRowLimit(false), _namesTotals(false), _colours(WhereTheyShow)
{}

bool ReportCommandLine::take(int* argc, char** argv)
{
    int nKept = 1;
    int i = 1;
    for (; i < *argc && !isTerminator(argv[i]); ++i) {
        if (std::strcmp(argv[i], "--summary") == 0) {
            _namesTotals = true;
            continue;
        }
        const char* value = nullptr;
        const char* name = optionOf(argv[i], value);
        if (name == nullptr) {
            argv[nKept++] = argv[i];
            continue;
        }
        if (value == nullptr && ++i == *argc) {
            return refuse(name, "", "a value must follow");
        }
        if (!takeWord(name, value == nullptr ? argv[i] : value)) {
            return false;
        }
    }
    for (; i < *argc; ++i) {
        argv[nKept++] = argv[i];
    }
    argv[nKept] = nullptr;
    *argc = nKept;
    return checkOutputs();
}

bool ReportCommandLine::takeWord(const char* name, const char* value)
{
    constexpr char Limit[] = "not a number from 0 to 100 with at most four decimals";
    if (std::strcmp(name, "--format") == 0) {
        return takeFormat(value);
    }
    if (std::strcmp(name, "-o") == 0) {
        return takeFile(value);
    }
    if (std::strcmp(name, "--color") == 0) {
        return takeColours(value);
    }
    if (std::strcmp(name, "--fail-under") == 0) {
        _hasWholeLimit = true;
        return _wholeLimit.parse(value) || refuse(name, value, Limit);
    }
    _hasRowLimit = true;
    return _rowLimit.parse(value) || refuse(name, value, Limit);
}

bool ReportCommandLine::takeFormat(const char* name)
{
    if (!isReportFormat(name)) {
        std::cerr << "zem-report: --format " << qipVisibleText(name) << ": not a format; there are "
                  << reportFormats << std::endl;
        return false;
    }
    _outputs.push_back({name, nullptr});
    return true;
}

// Of the format before it, if that has no file yet. "-" is the standard output.
bool ReportCommandLine::takeFile(const char* name)
{
    if (name[0] == '\0') {
        return refuse("-o", name, "a file without a name");
    }
    for (const Output& output : _outputs) {
        if (output._file != nullptr && std::strcmp(output._file, name) == 0) {
            return refuse("-o", name, "given twice");
        }
    }
    if (_outputs.empty() || _outputs.back()._file != nullptr) {
        _outputs.push_back({"text", nullptr});
    }
    _outputs.back()._file = std::strcmp(name, "-") == 0 ? nullptr : name;
    return true;
}

bool ReportCommandLine::takeColours(const char* when)
{
    if (std::strcmp(when, "auto") == 0) {
        _colours = WhereTheyShow;
    } else if (std::strcmp(when, "always") == 0) {
        _colours = Always;
    } else if (std::strcmp(when, "never") == 0) {
        _colours = Never;
    } else {
        return refuse("--color", when, "not auto, always or never");
    }
    return true;
}

bool ReportCommandLine::checkOutputs()
{
    if (_outputs.empty()) {
        _outputs.push_back({"text", nullptr});
    }
    int nPrinted = 0;
    for (const Output& output : _outputs) {
        nPrinted += output._file == nullptr ? 1 : 0;
    }
    if (nPrinted > 1) {
        std::cerr << "zem-report: more than one format for the standard output; give -o FILE "
                     "behind all but one"
                  << std::endl;
        return false;
    }
    return true;
}

bool ReportCommandLine::hasColours(bool isTerminal) const
{
    if (_colours != WhereTheyShow) {
        return _colours == Always;
    }
    const char* terminal = std::getenv("TERM");
    return isTerminal && !isSet("NO_COLOR") && terminal != nullptr && terminal[0] != '\0' &&
           std::strcmp(terminal, "dumb") != 0;
}

void ReportCommandLine::writeOptionLines(std::ostream& out)
{
    out << "        -n0           Function names as the map stores them\n"
           "\n"
           "        --format F    Write the report as F: "
        << reportFormats
        << "\n"
           "        -o file       into this file, as the format before it; text without one\n"
           "        --summary     Say at the end of a text what it adds up\n"
           "        --color=WHEN  Colours in a text: auto, always or never\n"
           "        --fail-under N       Exit status 3 when less than N per cent of all ran\n"
           "        --fail-under-each N  Exit status 4 when less than N per cent of a row ran\n"
           "\n";
}
