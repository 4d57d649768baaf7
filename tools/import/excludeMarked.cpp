// SPDX-License-Identifier: MIT
#include "tools/import/excludeMarked.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/InputFile.h"
#include "tools/common/SourcePath.h"
#include "tools/common/WorkOn.h"
#include "tools/common/parallel.h"
#include "tools/import/ExclusionMarkers.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace {

// Nobody writes a source of so many bytes.
constexpr uint64_t LargestSource = 64u << 20;
constexpr size_t MostMessages = 20;

// How many of the basic blocks have lines.
uint64_t blocksWithLines(const CovFunction& function)
{
    uint64_t blocks = 0;
    for (size_t i = 0; i < function._lines.size(); ++i) {
        blocks += i == 0 || function._lines[i - 1]._block != function._lines[i]._block ? 1 : 0;
    }
    return blocks;
}

void excludeLines(CovFunction& function, const ExclusionMarkers& markers, ImportLosses& losses)
{
    const uint64_t before = blocksWithLines(function);
    std::vector<CovLine>& lines = function._lines;
    const auto kept = std::remove_if(lines.begin(), lines.end(), [&markers](const CovLine& line) {
        return markers.excludes(line._line);
    });
    lines.erase(kept, lines.end());
    losses._markedBlocks += before - blocksWithLines(function);
    losses._markedFunctions += before != 0 && lines.empty() ? 1 : 0;
}

// Whether it is a file that can be a source.
bool isSource(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) != 0 ||
           (S_ISREG(status.st_mode) && static_cast<uint64_t>(status.st_size) <= LargestSource);
}

// Returns what went wrong; empty when nothing did.
std::string readSource(const std::string& path, std::string& text)
{
    InputFile file;
    const bool isRead = file.openToWatch(path) && file.size() <= LargestSource &&
                        file.append(text, static_cast<size_t>(file.size())) && file.isUnchanged();
    return isRead                   ? std::string()
           : file.problem().empty() ? std::string("it grows")
                                    : file.problem();
}

class MarkersJob : public ParallelJob
{
public:
    explicit MarkersJob(CoverageModel& model)
        : _model(model), _losses(model._files.size()), _problems(model._files.size()),
          _failures(model._files.size())
    {}

    void run(size_t item) override
    {
        CovFile& file = _model._files[item];
        const WorkOn work("searching for markers in ", file._path);
        std::string text;
        if (modificationTime(file._path) == 0) {
            return; // it is not there; the summary says that
        }
        if (!isSource(file._path)) {
            _losses[item]._sourcesNotSearched = 1;
            return;
        }
        _failures[item] = readSource(file._path, text);
        if (!_failures[item].empty()) {
            _losses[item]._unreadSources = 1;
            return;
        }
        ExclusionMarkers markers;
        markers.read(text);
        _problems[item] = markers.problems();
        if (markers.isEmpty()) {
            return;
        }
        for (CovFunction& function : file._functions) {
            excludeLines(function, markers, _losses[item]);
        }
    }

    void report(ImportLosses& losses, std::ostream& err) const;

private:
    CoverageModel& _model;
    std::vector<ImportLosses> _losses; // one for each file
    std::vector<std::vector<ExclusionMarkers::Problem>> _problems;
    std::vector<std::string> _failures; // why a source could not be read
};

void MarkersJob::report(ImportLosses& losses, std::ostream& err) const
{
    std::vector<std::string> messages;
    for (size_t i = 0; i < _problems.size(); ++i) {
        losses.add(_losses[i]);
        if (!_failures[i].empty()) {
            messages.push_back(_model._files[i]._path + ": cannot be searched for markers: " +
                               _failures[i] + "; --no-markers imports without");
        }
        for (const ExclusionMarkers::Problem& problem : _problems[i]) {
            messages.push_back(_model._files[i]._path + ":" + std::to_string(problem._line) + ": " +
                               problem._text);
        }
    }
    std::sort(messages.begin(), messages.end()); // the order of files is free
    for (size_t i = 0; i < std::min(messages.size(), MostMessages); ++i) {
        err << "zem-import: " << qipVisibleText(messages[i].c_str()) << '\n';
    }
    if (messages.size() > MostMessages) {
        err << "zem-import: and " << messages.size() - MostMessages << " more like these\n";
    }
}

} // namespace

void excludeMarked(CoverageModel& model, ImportLosses& losses, std::ostream& err,
                   unsigned int nThreads)
{
    MarkersJob job(model);
    runParallel(job, model._files.size(), nThreads);
    job.report(losses, err);
}
