// SPDX-License-Identifier: MIT
//
// A small table-driven command line. cmdln_parse() takes the options that the registered table
// knows out of an argument vector, calls a handler for each, and leaves every other word in place,
// in order, for the caller.
//
// A word beginning with '-' is looked up without it:
// - the whole word is an option: its arguments are the words that follow ("-s dFf");
// - it begins with an option that takes arguments: the rest of the word is the first ("-sdFf");
// - it begins with an option without arguments: the rest is looked up again ("-cte"). The first
//   letters decide, so "-c" sets "ct" and leaves the word "-" to the caller;
// - anything else stays, with a '-' before what was not understood.
// The words "--" and "-" end the options; the first of them is taken out.
//
// `option` is also a name of <getopt.h>: a file cannot include both.
#pragma once

struct match;

// One row of an option table. The table ends with a row whose name is null.
struct option
{
    const char* name; // without the '-'
    int nArgs;        // argument words that it takes: 0, 1 or 2

    // Called with the option's argument words, which are writable and live as long as the vector,
    // and with what matched. A null word is the end of the command line: nothing stands behind it.
    // Null for an option without arguments that is not a word of its own.
    void (*callback)(char** args, const match& found);
};

// What matched a word.
struct match
{
    int matching;           // characters of the word
    const ::option* option; // the row
};

// Makes `table` the one that cmdln_parse() uses; borrowed. A later call replaces it. Returns 0.
int cmdln_register(const option* table);

// `usage` prints the program's usage text. It is called for a command line that is nothing but a
// terminator; without it nothing is printed there.
void cmdln_onUsage(void (*usage)());

// Parses argv[0] to argv[*argc - 1]; argv[*argc] is null. The words that are kept move to the front
// in their order, those behind a terminator after them, unparsed, then the null; *argc becomes
// their number. The vector and its words are rewritten. Returns the number of options handled, a
// terminator included. Ends the program with status -1 when a terminator is the only argument, and
// when there is no memory.
int cmdln_parse(int* argc, char** argv);

// Prints the `n` words at `v` on the standard output, and whether v[n] is the null that should end
// them. REQUIRES: v has n + 1 entries, n + 2 when v[n] is not null. Returns n + 1.
int cmdln_printArg(int n, char** v);
