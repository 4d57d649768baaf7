// SPDX-License-Identifier: MIT
#include "tools/import/cobertura/CoberturaImporter.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/WorkOn.h"
#include "tools/import/cobertura/CoberturaDocument.h"
#include "tools/import/lines/InputFiles.h"
#include "tools/import/lines/inputNames.h"

#include <iostream>

namespace {

const char* const ends[] = {".xml", ".xml.gz", nullptr};

bool fail(const std::string& problem)
{
    std::cerr << "zem-import: " << qipVisibleText(problem.c_str()) << '\n';
    return false;
}

bool isDocument(const std::string& path, std::string& problem)
{
    constexpr size_t HeadSize = 4096;
    return headOf(path, HeadSize, problem).find("<coverage") != std::string::npos;
}

} // namespace

int CoberturaImporter::option(char** /*words*/)
{
    return 0;
}

void CoberturaImporter::input(const char* word)
{
    _words.emplace_back(word);
}

void CoberturaImporter::usage(std::ostream& out) const
{
    out << "  each document is a log of its own; a folder stands for those below it\n";
}

bool CoberturaImporter::recognises(const char* path) const
{
    std::string ignored;
    return isDocument(path, ignored);
}

bool CoberturaImporter::findDocuments(std::vector<std::string>& paths, ImportLosses& losses) const
{
    InputFiles files(ends);
    bool isRead = true;
    for (const std::string& word : _words) {
        const size_t before = paths.size();
        size_t file = files.paths().size();
        const bool isThere = files.add(word);
        for (; file < files.paths().size(); ++file) {
            const std::string& path = files.paths()[file];
            // Folders hold other XML, too.
            std::string problem;
            if (path == word || isDocument(path, problem)) {
                paths.push_back(path);
            } else if (!problem.empty()) { // it may have been one
                files.problems().addUnread(path, problem);
            }
        }
        if (isThere && paths.size() == before) {
            files.problems().add(word + ": no Cobertura document below it");
        }
        isRead = isRead && paths.size() != before;
    }
    files.problems().report(losses);
    return isRead;
}

bool CoberturaImporter::readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads)
{
    std::vector<std::string> paths;
    if (!findDocuments(paths, losses)) {
        return false;
    }
    for (const std::string& path : paths) {
        const WorkOn work("reading ", path);
        CoberturaDocument document(_table);
        if (!document.read(path, stemOf(path))) {
            return fail(document.problem());
        }
        losses.add(document.losses());
        losses._ambiguousSources += document.ambiguous().size();
        if (!document.ambiguous().empty()) {
            fail(path + ": " + document.ambiguous().front());
        }
    }
    return _table.fillBuild(build, losses, nThreads) || fail("the documents have too many lines");
}

bool CoberturaImporter::readRun(size_t run, ImportedRun& result, ImportLosses& /*losses*/,
                                unsigned int /*nThreads*/)
{
    // The only one is known by the import's name.
    result._name = runs() > 1 ? _table.runName(run) : std::string();
    result._executionTime = _table.runTime(run);
    _table.fillCounts(run, result._counts);
    return true;
}
