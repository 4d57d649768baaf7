// SPDX-License-Identifier: MIT
//
// The last step of every import: writes the finished model and the counts of its runs as files that
// cannot lie, whatever happens meanwhile.
//
//   NAME-<digest>.map   named after its content, so that it never changes and builds do not
//                       overwrite each other's. On the disk before any log names it
//   RUN.losses          what was left out
//   RUN.log             names the map. Takes its name last, so that there is the old one or this
//
// Several logs take their names together, so that the disk is waited for once and not for each.
// Each of them is the old one or the new one.
//
// A disk takes long to say that something is on it, so the order of it all is:
//
//   1  the map is written; when no file has its name yet, the system begins to put it on the disk.
//      So it does with losses and logs, each when it is complete, and waits for none
//   2  the map is on the disk, which records where all the files lie that were begun
//   3  the map takes its name
//   4  losses and logs are on the disk, most often already
//   5  the folder is on the disk, with the map's name: now a log may name it
//   6  losses and logs take their names
//   7  the folder is on the disk, and finish() returns
//
// A power cut before 6 leaves the old logs, with their maps; a map that no log names does no harm
// when it is whole, as 2 makes sure. One after 5 leaves whole files, old or new. When the map is
// there already, 2 and 3 are left out; 5 is not, because another import may have named it just now.
//
// Life cycle:  open() > add() for each run > finish()
#pragma once

#include "tools/common/CoverageCounts.h"
#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"
#include "tools/common/OutputFolder.h"
#include "tools/common/PendingFile.h"

#include <memory>
#include <string>
#include <vector>

struct CoverageOutput
{
    std::string _folder = "."; // made when it is not there
    std::string _name = "coverage";
    bool _isRelative = false; // logs name the map as seen from the current folder
};

class CoverageWriter
{
public:
    // Borrows both for its life. Every file of the model is in all, map and logs.
    // REQUIRES: finishCoverage() has run.
    CoverageWriter(const CoverageModel& model, const CoverageOutput& output);
    // Leaves nothing of what has not taken its name.
    ~CoverageWriter();
    CoverageWriter(const CoverageWriter&) = delete;
    CoverageWriter& operator=(const CoverageWriter&) = delete;

    // Makes the folder and the map, which does not take its name yet. A map that is there with the
    // same bytes is left as it is. Returns false when something cannot be written or the model has
    // no files.
    [[nodiscard]] bool open();

    // Writes RUN.log and RUN.losses; `run` is the name of no other run. Older files of that name
    // stay until finish(), or the add() of some runs later, gives the new ones their names. Returns
    // false when something cannot be written: the run's older log, its map and its losses are as
    // they were. REQUIRES: open() returned true.
    [[nodiscard]] bool add(const std::string& run, const CoverageCounts& counts,
                           const ImportLosses& losses);

    // Gives all files that wait their names. Returns false when that fails; those that
    // runsPlaced() does not count are as they were.
    [[nodiscard]] bool finish();

    // How many runs, in the order of add(), have their files under their names.
    size_t runsPlaced() const { return _runsPlaced; }
    // As the logs name it. REQUIRES: open() returned true.
    const std::string& map() const { return _mapAsNamed; }
    // "cannot write FILE: reason" when something returned false.
    const std::string& problem() const { return _problem; }

private:
    struct Run
    {
        std::string _name;
        PendingFile _log;
        PendingFile _losses;
    };
    // As many wait for their names; each holds two files open.
    static constexpr size_t RunsAtOnce = 16;

    // Of a file as the user knows it.
    std::string named(const std::string& name) const { return _output._folder + "/" + name; }
    // Of the same file as the system finds it.
    std::string placed(const std::string& name) const { return _folder.path() + "/" + name; }

    bool fail(const std::string& file);
    bool fail(const std::string& file, const std::string& reason);
    bool isFree(const std::string& name);
    bool writeMap();
    bool nameMap();
    bool placeMap();
    bool isSameMap(const std::string& path);
    bool writeLog(PendingFile& log, const CoverageCounts& counts);
    bool writeLosses(PendingFile& note, const ImportLosses& losses);
    bool sync(Run& run);
    bool place(Run& run);

    const CoverageModel& _model;
    const CoverageOutput& _output;
    OutputFolder _folder;
    PendingFile _map;
    std::string _mapName;     // without the folder
    std::string _mapAsNamed;  // by logs
    bool _isMapThere = false; // under its name
    std::vector<std::unique_ptr<Run>> _waiting;
    size_t _runsPlaced = 0;
    std::string _problem;
};
