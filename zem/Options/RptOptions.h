// SPDX-License-Identifier: MIT
//
// What the report options of the command line mean: -d, -f, -n, -s and -ct. The viewer and
// zem-report derive from it and say what to do with each setting. A word that makes no sense gives
// a message and the usage text, and the default is set; nothing here ends the program.
//
// Each handler gets the option's argument words as the command line has them. A null word is the
// end of the command line: nothing behind it is read.
#pragma once

#include "zem/Rows/RptType.h"

#include <iosfwd>

class RptOptions
{
public:
    virtual ~RptOptions();

    // -d: "d", "F", "f" or "o" as the first letter of args[0].
    void setReportType(char** args);
    // -n: "s", "e" or "m": levels 1 to 3 of ZEMRepository::viewByFunction.
    void setManglingLevel(char** args);
    // -f: "F", "d", "f" or "o", then the name in args[1]. Without a name no filter is added.
    void setFilter(char** args);

    // Writes the option lines of the usage text, the empty lines around them included.
    static void writeOptionLines(std::ostream& out);

    // What the settings do.
    virtual void reportType(RptType type) = 0;
    virtual void manglingLevel(int level) = 0;
    // `kind` is the letter of the option; `name` is a word of the command line, not a copy.
    virtual void addFilter(int kind, const char* name) = 0;
    // -s; `keys` as typed, null when the command line ends there.
    virtual void sortBy(const char* keys) = 0;
    // -ct
    virtual void showHitCounts() = 0;
    // -n with a letter that is none of the above; false when it means nothing here either, as it
    // does in the viewer.
    virtual bool otherManglingLetter(char letter);
    // Prints the program's usage text on the standard error stream.
    virtual void usageHelp() = 0;

protected:
    void unknownLetter(const char* message, char letter);
};
