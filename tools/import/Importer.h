// SPDX-License-Identifier: MIT
//
// One kind of coverage that zem-import reads. The program's table names one for each subcommand; it
// gives the importer its words, lets it fill a model and writes that.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

#include <iosfwd>

class Importer
{
public:
    virtual ~Importer() = default;

    // Takes the option at `words[0]` and what belongs to it; `words` ends with a null pointer and
    // outlives the importer. Returns how many words it took, 0 for an option that it does not know
    // or whose value is missing.
    virtual int option(char** words) = 0;

    // Takes a word that is no option.
    virtual void input(const char* word) = 0;

    // Writes a line for each of its own options.
    virtual void usage(std::ostream& out) const = 0;

    // Fills the model from the inputs with `nThreads` threads. Copies of a function are merged; the
    // order of files and functions is free. Problems are one line each on the standard error
    // stream. Returns false when the inputs cannot be read at all.
    virtual bool import(CoverageModel& model, ImportLosses& losses, unsigned int nThreads) = 0;
};
