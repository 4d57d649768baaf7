// SPDX-License-Identifier: MIT
//
// The options that zem-report has beside those of the viewer: what to write where, and which
// coverage is enough. They are words of their own: "--format json", "--format=json".
#pragma once

#include "tools/formats/Percent.h"

#include <iosfwd>
#include <vector>

class ReportCommandLine
{
public:
    struct Output
    {
        const char* _format; // a format of makeReportWriter()
        const char* _file;   // null for the standard output
    };

    ReportCommandLine();

    // Takes these options out of argv[1] to argv[*argc - 1], as far as a word that ends the
    // options, and leaves all others in their order for cmdln_parse(). The words are borrowed.
    // Returns false, with a message, when one of them makes no sense; the vector is of no use then.
    bool take(int* argc, char** argv);

    // At least one; at most one of them to the standard output.
    const std::vector<Output>& outputs() const { return _outputs; }

    // Null when there is none.
    const Percent* wholeLimit() const { return _hasWholeLimit ? &_wholeLimit : nullptr; }
    const Percent* rowLimit() const { return _hasRowLimit ? &_rowLimit : nullptr; }

    // Whether a text says at its end what it adds up.
    bool namesTotals() const { return _namesTotals; }

    // Whether a text on the standard output, which is a terminal or not, has colours.
    bool hasColours(bool isTerminal) const;

    // The lines of the usage text.
    static void writeOptionLines(std::ostream& out);

private:
    enum Colours { WhereTheyShow, Always, Never };

    bool takeWord(const char* name, const char* value);
    bool takeFormat(const char* name);
    bool takeFile(const char* name);
    bool takeColours(const char* when);
    bool checkOutputs();

    std::vector<Output> _outputs;
    Percent _wholeLimit;
    Percent _rowLimit;
    bool _hasWholeLimit;
    bool _hasRowLimit;
    bool _namesTotals;
    Colours _colours;
};
