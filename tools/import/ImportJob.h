// SPDX-License-Identifier: MIT
//
// One import from the reading to the files and the summary: what zem-import does when it knows what
// to read, and by which importer.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"
#include "tools/common/countRun.h"
#include "tools/import/ImportOptions.h"
#include "tools/import/Importer.h"
#include "tools/import/RunNames.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

class ImportJob
{
public:
    // Borrows all for its life. `importer` has its inputs. The summary goes to `out`, messages to
    // `err`.
    ImportJob(Importer& importer, const ImportOptions& options, std::ostream& out,
              std::ostream& err);

    // Returns whether all went well: every unit and run was read and every file written.
    bool run();

private:
    bool makeModel();
    bool writeRuns();
    bool addRun(size_t run, CoverageWriter& writer);
    void keepSummary(const std::string& name, const std::string& map, const ImportLosses& losses);
    bool fail(const std::string& problem);

    Importer& _importer;
    const ImportOptions& _options;
    std::ostream& _out;
    std::ostream& _err;
    const unsigned int _nThreads;
    ImportedBuild _build;
    CoverageModel _model;
    ImportLosses _losses; // of the build
    RunNames _names;
    ComparedRuns _compared;
    CoverageCounts _counts;              // of the run at hand
    std::string _sizes;                  // of the model, for the summaries
    std::vector<std::string> _summaries; // of each run given to the writer
    bool _isWhole = true;
};
