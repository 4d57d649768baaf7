// SPDX-License-Identifier: MIT
#include "qip/Support/cmdln.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr option EmptyTable[] = {{nullptr, 0, nullptr}};

const option* optionList = EmptyTable;
void (*printUsage)() = nullptr;

enum Scan { NoMatch, ExactMatch, PartialMatch };

// The number of characters in which an option's name and a word agree, when the first ones do. The
// first always counts, so a name longer than the word matches in part.
int matchedCharacters(const char* name, const char* word)
{
    int k = 0;
    do {
        ++k;
    } while (name[k] != '\0' && name[k] == word[k]);
    return k;
}

// Looks up `word`. An exact match ends the search and wins; of several partial matches the longest
// wins, of equal ones the first.
Scan scanOptions(const char* word, match& found)
{
    found = {0, nullptr};
    for (const option* row = optionList; row->name != nullptr; ++row) {
        if (word[0] == '\0' || row->name[0] != word[0]) {
            continue;
        }
        const int k = matchedCharacters(row->name, word);
        if (word[k] == '\0' && row->name[k] == '\0') {
            found = {k, row};
            return ExactMatch;
        }
        if (k > found.matching) {
            found = {k, row};
        }
    }
    return found.matching > 0 ? PartialMatch : NoMatch;
}

// Handles the option word at *position. Returns the number of words behind it that belong to it, or
// -1 when the word, possibly rewritten, is to be kept.
int processOption(char** position)
{
    char* word = *position + 1;
    for (;;) {
        match found;
        switch (scanOptions(word, found)) {
        case ExactMatch:
            found.option->callback(position + 1, found);
            return found.option->nArgs;
        case PartialMatch:
            if (found.option->nArgs > 0) {
                *position = word + found.matching;
                found.option->callback(position, found);
                return found.option->nArgs - 1;
            }
            found.option->callback(nullptr, found);
            word += found.matching;
            break;
        case NoMatch:
            *--word = '-';
            *position = word;
            return -1;
        }
    }
}

bool isTerminator(const char* word)
{
    return std::strcmp(word, "--") == 0 || std::strcmp(word, "-") == 0;
}

} // namespace

int cmdln_register(const option* table)
{
    optionList = table;
    return 0;
}

void cmdln_onUsage(void (*usage)())
{
    printUsage = usage;
}

int cmdln_parse(int* argc, char** argv)
{
    const int count = *argc;
    char** kept = new (std::nothrow) char*[static_cast<size_t>(std::max(count, 0))];
    if (kept == nullptr) {
        std::fprintf(stderr, "cmdopt: Unable to allocate room for %d (char *)\n", count);
        std::fprintf(stderr, "cmdopt: Aborting...\n");
        std::exit(-1);
    }
    int nKept = 0;
    int nOptions = 0;
    int nConsumed = 0;
    int rest = count; // the first word behind a terminator
    for (int i = 0; i < count; ++i) {
        if (isTerminator(argv[i])) {
            if (count == 2) {
                if (printUsage != nullptr) {
                    printUsage();
                }
                std::exit(-1);
            }
            ++nOptions;
            rest = i + 1;
            break;
        }
        const int used = argv[i][0] == '-' ? processOption(&argv[i]) : -1;
        if (used < 0) {
            kept[nKept++] = argv[i];
            continue;
        }
        // Words that the command line does not have are not counted.
        const int present = std::min(used, count - 1 - i);
        ++nOptions;
        nConsumed += present;
        i += present;
    }
    std::copy(kept, kept + nKept, argv);
    delete[] kept;
    std::copy(argv + rest, argv + count + 1, argv + nKept);
    *argc = count - nOptions - nConsumed;
    return nOptions;
}

int cmdln_printArg(int n, char** v)
{
    std::printf("Found %d args: { ", n);
    std::fflush(stdout);
    for (int i = 0; i < n; ++i) {
        std::printf("%s, ", v[i]);
        std::fflush(stdout);
    }
    if (v[n] == nullptr) {
        std::printf("(null) }\n");
    } else {
        std::printf("(missing null)(%s) }\n", v[n + 1] == nullptr ? "(null)" : v[n + 1]);
    }
    std::fflush(stdout);
    return n + 1;
}
