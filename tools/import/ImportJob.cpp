// SPDX-License-Identifier: MIT
#include "tools/import/ImportJob.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/CoverageWriter.h"
#include "tools/common/PendingFile.h"
#include "tools/common/RelativePath.h"
#include "tools/common/WorkOn.h"
#include "tools/common/countRun.h"
#include "tools/common/finishCoverage.h"
#include "tools/common/missingSources.h"
#include "tools/common/parallel.h"
#include "tools/import/ModelBuilder.h"
#include "tools/import/excludeMarked.h"

#include <ostream>

namespace {

void makeRelative(CoverageModel& model)
{
    const RelativePath relative;
    for (CovFile& file : model._files) {
        file._path = relative.of(file._path);
    }
}

// "2 files, 3 functions, 10 blocks"
std::string sizesOf(const CoverageModel& model)
{
    size_t functions = 0;
    size_t blocks = 0;
    for (const CovFile& file : model._files) {
        functions += file._functions.size();
        for (const CovFunction& function : file._functions) {
            blocks += function._blocks.size();
        }
    }
    return std::to_string(model._files.size()) + " files, " + std::to_string(functions) +
           " functions, " + std::to_string(blocks) + " blocks";
}

// "; 3 system functions", or nothing.
std::string textBehind(const char* before, const ImportLosses& losses, const char* behind)
{
    const std::string text = losses.text();
    return text.empty() ? text : before + text + behind;
}

} // namespace

ImportJob::ImportJob(Importer& importer, const ImportOptions& options, std::ostream& out,
                     std::ostream& err)
    : _importer(importer), _options(options), _out(out), _err(err), _nThreads(coreCount()),
      _build(options._filter, options._moves)
{}

bool ImportJob::fail(const std::string& problem)
{
    _err << "zem-import: " << qipVisibleText(problem.c_str()) << '\n';
    return false;
}

bool ImportJob::makeModel()
{
    const WorkOn work("importing for ", _options._output._folder);
    if (!_importer.readBuild(_build, _losses, _nThreads)) {
        return false;
    }
    buildModel(_build, _options._keepsInstances, _nThreads, _model, _losses);
    if (_options._obeysMarkers) {
        excludeMarked(_model, _losses, _err, _nThreads);
    }
    finishCoverage(_model, _options._names, _losses, _nThreads);
    if (_model._files.empty()) {
        return fail("nothing to write: no function is left" + textBehind(" (", _losses, ")"));
    }
    const std::string missing = missingSources(_model, _options._inputs);
    if (!missing.empty()) {
        (void)fail(missing); // the numbers are right all the same
    }
    if (_options._output._isRelative) {
        makeRelative(_model);
    }
    return true;
}

void ImportJob::keepSummary(const std::string& name, const std::string& map,
                            const ImportLosses& losses)
{
    _summaries.push_back(_options._output._folder + "/" + name + ".log of map " +
                         map.substr(map.rfind('/') + 1) + ": " + _sizes +
                         textBehind("; ", losses, ""));
}

// Writes one run. Returns false when that fails, which ends the import; a run that cannot be read
// does not.
bool ImportJob::addRun(size_t run, CoverageWriter& writer)
{
    ImportedRun read;
    ImportLosses losses = _losses;
    if (!_importer.readRun(run, read, losses, _nThreads)) {
        _isWhole = false;
        return true;
    }
    _counts._executionTime = read._executionTime;
    const bool isOnly = _importer.runs() == 1;
    countRun(_model, read._counts, _counts, losses, _nThreads, isOnly ? nullptr : &_compared);
    std::vector<int64_t>().swap(read._counts);
    const std::string name =
        read._name.empty() ? _names.another(_options._output._name) : _names.fileName(read._name);
    _isWhole = _isWhole && !losses.isIncomplete();
    keepSummary(name, writer.map(), losses);
    return writer.add(name, _counts, losses);
}

bool ImportJob::writeRuns()
{
    const WorkOn work("writing into ", _options._output._folder);
    PendingFile::removeOnSignals();
    _sizes = sizesOf(_model);
    CoverageWriter writer(_model, _options._output);
    bool isWritten = writer.open();
    for (size_t run = 0; run < _importer.runs() && isWritten; ++run) {
        isWritten = addRun(run, writer);
    }
    isWritten = isWritten && writer.finish();
    for (size_t run = 0; run < writer.runsPlaced(); ++run) {
        _out << "zem-import: " << qipVisibleText(_summaries[run].c_str()) << '\n';
    }
    return isWritten || fail(writer.problem());
}

bool ImportJob::run()
{
    return makeModel() && writeRuns() && _isWhole;
}
