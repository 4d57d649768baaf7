// SPDX-License-Identifier: MIT
//
// One unit of a build: reads its notes and counters and puts its functions into the store. Units
// are independent of each other, so that threads may share them out.
#pragma once

#include "tools/common/ImportLosses.h"
#include "tools/import/SourceTable.h"
#include "tools/import/gcc/GccTree.h"
#include "tools/import/gcc/GcnoFile.h"
#include "tools/import/gcc/GraphStore.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class GcovDocument;
class GcovInput;

class GccUnit
{
public:
    // Borrows both for its life.
    GccUnit(SourceTable& sources, GraphStore& store);

    // Reads true basic blocks. A unit whose notes are damaged gives no functions; one whose
    // counters cannot be used gives all its functions and no counts. Both set failure().
    // Returns false, with no functions, for a version that the readers do not know.
    bool readBlocks(const GccUnitFiles& files);

    // The same from memory; `counters` is null for a unit that never ran.
    bool readBlocks(const std::string& notesBytes, const std::string* counterBytes);

    // Asks the program `gcov` for lines instead and makes a block of each.
    void readLines(const GccUnitFiles& files, const char* gcov);

    // Keeps what readRun() needs; before anything is read.
    void keepForRuns() { _isKeptForRuns = true; }

    // Adds the counters of one more run to the functions in the store. failure() is what went wrong
    // with these counters, losses() are of this run alone. Does nothing for a unit whose notes
    // could not be read. REQUIRES: the unit was read, kept for runs, with no counters.
    void readRun(const GccUnitFiles& files, const char* gcov);

    const ImportLosses& losses() const { return _losses; }
    // What went wrong, without the name of the unit; empty when nothing did.
    const std::string& failure() const { return _failure; }
    // When the unit ran last, in seconds since the epoch; 0 when it did not.
    uint32_t executionTime() const { return _executionTime; }

private:
    // A wanted function of the unit: in the store already, or just read.
    struct Function
    {
        GcnoIdentity _identity;
        ContentKey _bytes;
        GccGraph* _known;
        std::unique_ptr<GccGraph> _read;
    };

    // A function of a unit that is kept for runs.
    struct Counted
    {
        GcnoIdentity _identity;
        GccGraph* _graph;
    };
    enum Form { Unread, Blocks, Lines };

    const SourceNumber& source(const std::string& folder, std::string_view file);
    void forgetNames();
    void countKind(KnownFunction::Kind kind);
    KnownFunction::Kind kindOf(const GcnoFunction& function, const SourceNumber& source) const;
    bool useCounters(GcdaFile& counters, uint32_t stamp, std::string& failure);
    bool readBytes(std::string_view notesBytes, const std::string_view* counterBytes);
    std::string_view readCounters(const GccUnitFiles& files, GcovInput& counters);
    void addRun(std::string_view counterBytes);
    bool readFunctions(GcnoFile& notes, GcdaFile* counters);
    bool readFunction(GcnoFile& notes, GcnoFunction& function, Function& entry);
    std::unique_ptr<GccGraph> makeGraph(const GcnoFunction& function,
                                        KnownFunction::Kind kind) const;
    void findFiles(const GcnoFunction& function);
    bool holdsOthers(const GcnoFunction& function) const;
    void addLines(const GcnoFunction& function, GccGraph& graph) const;
    static bool haveSameFunctions(const GccUnitFiles& files);
    bool keepLines(GcovDocument& document);
    void keep(GcdaFile* counters);
    void fail(const std::string& reason);
    void failCounters(const std::string& reason);

    SourceTable& _sources;
    GraphStore& _store;
    // By the name in the notes, as long as they are read.
    std::unordered_map<std::string_view, SourceNumber> _numbers;
    std::pair<std::string_view, SourceNumber> _lastNumber; // that was asked for
    std::vector<SourceNumber> _files;                      // of one function
    std::vector<Function> _functions;
    bool _isKeptForRuns = false;
    Form _form = Unread;
    uint32_t _stamp = 0;
    std::vector<Counted> _counted;
    std::vector<GcnoIdentity> _leftOut; // functions that runs have counters for, too
    ImportLosses _losses;
    std::string _failure;
    std::string _notesFolder;     // empty when they came from memory
    std::string _folder;          // that relative names in the notes count from
    std::string _countersPath;    // empty when they came from memory
    std::string _countersProblem; // why they could not be read
    uint32_t _executionTime = 0;
};
