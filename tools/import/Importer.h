// SPDX-License-Identifier: MIT
//
// One kind of coverage that zem-import reads. The program's table names one for each kind;
// ImportJob gives it its words, lets it read and writes what it found.
//
// Life cycle:  option() and input() > readBuild() > readRun() for each run
#pragma once

#include "tools/common/ImportLosses.h"
#include "tools/import/ImportedBuild.h"
#include "tools/import/ImportedRun.h"

#include <cstddef>
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

    // Whether it can read the file or folder `path`, by names and first bytes: a cheap look, for
    // guessing the kind. Must not wait, whatever `path` is.
    virtual bool recognises(const char* path) const = 0;

    // Reads what follows from the build alone, with `nThreads` threads. Source files get their
    // numbers from `build._sources`, which also says which of them are left out. The order of
    // copies is free. Problems are one line each on the standard error stream. Returns false when
    // the inputs cannot be read at all. `build` stays until the last readRun(), without its copies.
    virtual bool readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads) = 0;

    // How many runs the inputs hold, at least one. Called after readBuild() returned true.
    virtual size_t runs() const = 0;

    // Reads the run `run`, from 0; called once for each, in order. `losses` are those of this run
    // alone. Returns false, with a line on the standard error stream, when it cannot be read; the
    // others are read all the same.
    virtual bool readRun(size_t run, ImportedRun& result, ImportLosses& losses,
                         unsigned int nThreads) = 0;
};
