// SPDX-License-Identifier: MIT
#include "tools/import/ImportOptions.h"

#include <cstring>
#include <ostream>

namespace {

bool isOption(const char* word, const char* option)
{
    return std::strcmp(word, option) == 0;
}

// An option without a value.
bool takeFlag(const char* word, ImportOptions& options)
{
    if (isOption(word, "--relative")) {
        options._output._isRelative = true;
    } else if (isOption(word, "--full-names")) {
        options._names._isFull = true;
    } else if (isOption(word, "--instances")) {
        options._keepsInstances = true;
    } else if (isOption(word, "--no-markers")) {
        options._obeysMarkers = false;
    } else if (isOption(word, "--system")) {
        options._filter.keepSystem();
    } else {
        return false;
    }
    return true;
}

bool takeValue(const char* word, const char* value, ImportOptions& options)
{
    if (isOption(word, "-o")) {
        options._output._folder = value;
    } else if (isOption(word, "--name")) {
        options._output._name = value;
    } else if (isOption(word, "--exclude")) {
        options._filter.exclude(value);
    } else if (isOption(word, "--only")) {
        options._filter.only(value);
    } else if (isOption(word, "--map")) {
        options._badMove = options._moves.add(value) ? options._badMove : value;
    } else {
        return false;
    }
    return true;
}

} // namespace

int ImportOptions::take(char** words)
{
    if (takeFlag(words[0], *this)) {
        return 1;
    }
    return words[1] != nullptr && takeValue(words[0], words[1], *this) ? 2 : 0;
}

std::string ImportOptions::problem() const
{
    if (_output._name.find('/') != std::string::npos || _output._name.empty()) {
        return "not the name of a file: --name '" + _output._name + "'";
    }
    if (!_badMove.empty()) {
        return "not OLD=NEW: --map '" + _badMove + "'";
    }
    return _output._folder.empty() ? "the folder to write into has no name: -o ''" : "";
}

void ImportOptions::usage(std::ostream& out)
{
    out << "  -o DIR           where to write (default: the current folder)\n"
           "  --name NAME      write NAME-<digest>.map, NAME.log and NAME.losses (default: "
           "coverage)\n"
           "  --only DIR       keep only source files below DIR\n"
           "  --exclude GLOB   leave out source files whose path matches\n"
           "  --system         keep source files below /usr too\n"
           "  --map OLD=NEW    sources that the build had below OLD are below NEW\n"
           "  --no-markers     keep lines that LCOV_EXCL_LINE and its like exclude\n"
           "  --instances      keep the instances of a template apart\n"
           "  --relative       write paths as seen from the current folder\n"
           "  --full-names     do not shorten long names\n";
}
