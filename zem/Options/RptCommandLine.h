// SPDX-License-Identifier: MIT
//
// The table of the report options, which zem and zem-report share: which word calls which handler
// of RptOptions. -e and -X are taken and do nothing, so that they are never taken for files.
#pragma once

class RptOptions;

class RptCommandLine
{
public:
    // Takes the options out of the argument vector (see cmdln_parse) and carries them out on
    // `options`. Returns the number of options handled.
    static int parse(RptOptions& options, int* argc, char** argv);
};
