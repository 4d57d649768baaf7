// SPDX-License-Identifier: MIT
#include "tools/import/gcov/GcovImporter.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/Progress.h"
#include "tools/common/SourcePath.h"
#include "tools/common/WorkOn.h"
#include "tools/common/parallel.h"
#include "tools/import/gcov/JsonDocuments.h"
#include "tools/import/lines/InputFiles.h"
#include "tools/import/lines/inputNames.h"

#include <algorithm>
#include <cstring>
#include <iostream>

namespace {

const char* const ends[] = {".gcov.json.gz", ".gcov.json", nullptr};

void say(const std::string& problem)
{
    std::cerr << "zem-import: " << qipVisibleText(problem.c_str()) << '\n';
}

// Puts what a document says into the store. Returns false when there is no room for it.
bool keepDocument(GcovDocument& document, size_t run, SourceTable& sources, GcovCopies& copies,
                  ImportLosses& losses)
{
    losses._linesWithoutNumber += document.linesWithoutNumber();
    for (const GcovSource& file : document.sources()) {
        const SourceNumber source = sources.find(absolutePath(document.folder(), file._path));
        if (source._answer != SourceFilter::Kept) {
            (source._answer == SourceFilter::System ? losses._systemFunctions
                                                    : losses._excludedFunctions) +=
                file._functions.size();
            continue;
        }
        for (const GcovFunction& function : file._functions) {
            if (!copies.add(run, source._number, function)) {
                return false;
            }
        }
        if (!copies.addStrays(run, source._number, file._strayLines)) {
            return false;
        }
    }
    return true;
}

// Reads all files; each item is one.
class DocumentsJob : public ParallelJob
{
public:
    struct Outcome
    {
        ImportLosses _losses;
        std::string _problem;
        uint32_t _time = 0;
    };

    DocumentsJob(const std::vector<GcovImporter::Document>& documents, SourceTable& sources,
                 GcovCopies& copies)
        : _documents(documents), _sources(sources), _copies(copies),
          _progress("Reading documents", documents.size()), _outcomes(documents.size())
    {}

    void run(size_t item) override
    {
        const WorkOn work("reading ", _documents[item]._path);
        _outcomes[item]._time = modificationTime(_documents[item]._path);
        readFile(_documents[item], _outcomes[item]);
        _outcomes[item]._losses._failedUnits += _outcomes[item]._problem.empty() ? 0 : 1;
        _progress.step();
    }

    const Outcome& outcome(size_t item) const { return _outcomes[item]; }

private:
    void readFile(const GcovImporter::Document& file, Outcome& outcome);

    const std::vector<GcovImporter::Document>& _documents;
    SourceTable& _sources;
    GcovCopies& _copies;
    Progress _progress;
    std::vector<Outcome> _outcomes;
};

void DocumentsJob::readFile(const GcovImporter::Document& file, Outcome& outcome)
{
    JsonDocuments documents;
    if (!documents.open(file._path)) {
        outcome._problem = documents.problem();
        return;
    }
    GcovDocument document;
    std::string json;
    bool isAny = false;
    while (documents.next(json)) {
        isAny = true;
        const std::string place =
            documents.line() > 1 ? "document on line " + std::to_string(documents.line()) + ": "
                                 : std::string();
        if (!document.parse(json)) {
            outcome._problem = place + document.problem();
            return;
        }
        if (!keepDocument(document, file._run, _sources, _copies, outcome._losses)) {
            outcome._problem = place + "there are more lines than one build can have";
            return;
        }
    }
    outcome._problem = documents.problem();
    if (!isAny && outcome._problem.empty()) {
        outcome._problem = "no document in it";
    }
}

} // namespace

int GcovImporter::option(char** words)
{
    if (std::strcmp(words[0], "--each") == 0) {
        _isEach = true;
        return 1;
    }
    return 0;
}

void GcovImporter::input(const char* word)
{
    _words.emplace_back(word);
}

void GcovImporter::usage(std::ostream& out) const
{
    out << "  --each           a log for each FILE or FOLDER, not one for all\n"
           "  a folder stands for the files below it that end in .gcov.json.gz or .gcov.json\n";
}

bool GcovImporter::recognises(const char* path) const
{
    const InputFiles files(ends);
    return files.isLikely(path) || (files.fits(path) && headOf(path, 1) == "{");
}

bool GcovImporter::findDocuments(std::vector<Document>& documents, ImportLosses& losses) const
{
    InputFiles files(ends);
    bool isRead = true;
    for (size_t i = 0; i < _words.size(); ++i) {
        isRead = files.add(_words[i]) && isRead;
        for (size_t file = documents.size(); file < files.paths().size(); ++file) {
            documents.push_back({files.paths()[file], _isEach ? i : 0});
        }
    }
    files.problems().report(losses);
    return isRead;
}

bool GcovImporter::readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads)
{
    std::vector<Document> documents;
    if (!findDocuments(documents, losses)) {
        return false;
    }
    _copies = std::make_unique<GcovCopies>(runs());
    _times.assign(runs(), 0);
    DocumentsJob job(documents, build._sources, *_copies);
    runParallel(job, documents.size(), nThreads);
    bool isAny = false;
    for (size_t i = 0; i < documents.size(); ++i) {
        const DocumentsJob::Outcome& outcome = job.outcome(i);
        if (!outcome._problem.empty()) {
            say(documents[i]._path + ": " + outcome._problem);
        }
        isAny = isAny || outcome._problem.empty();
        losses.add(outcome._losses);
        uint32_t& time = _times[documents[i]._run];
        time = std::max(time, outcome._time);
    }
    _copies->fillBuild(build, losses);
    return isAny;
}

bool GcovImporter::readRun(size_t run, ImportedRun& result, ImportLosses& /*losses*/,
                           unsigned int /*nThreads*/)
{
    // The only one is known by the import's name.
    result._name = runs() > 1 ? stemOf(_words[run]) : std::string();
    result._executionTime = _times[run];
    _copies->takeCounts(run, result._counts);
    return true;
}
