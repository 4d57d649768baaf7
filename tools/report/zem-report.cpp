// SPDX-License-Identifier: MIT
//
// zem-report: the viewer's report as text, through the same repository, rows and sort, without X.
#include "qip/Support/cmdln.h"
#include "qip/Support/qipVLRecFile.h"
#include "zem/Reports/RptCommandLine.h"
#include "zem/Reports/RptInfo.h"
#include "zem/Reports/RptOptions.h"
#include "zem/Reports/RptText.h"
#include "zem/Reports/ZEMRptTable.h"
#include "zem/Reports/ZEMView.h"
#include "zem/Repository/ZEMRepository.h"

#include <cstdio>
#include <cstring>
#include <iostream>
#include <unistd.h>

namespace {

enum ExitStatus { Success = 0, LogFailed = 1, Misused = 2 };

void usage()
{
    std::cerr << "Usage: zem-report [options] logfile ...\n";
    RptOptions::writeOptionLines(std::cerr);
    std::cerr << "        --help        Print this text\n"
                 "        --version     Print the version\n";
}

// The options, carried out on a report of this program.
class Report : public RptOptions
{
public:
    void reportType(RptType type) override { _info._type = type; }
    void manglingLevel(int level) override { _level = level; }
    void addFilter(int kind, const char* name) override { _repository.addFilter(kind, name); }
    void sortBy(const char* keys) override { _info.sortKeys(keys); }
    void showHitCounts() override {} // there is no source to show them in
    void usageHelp() override { usage(); }

    // Merges a log; false, with the viewer's message, when it could not be read.
    bool merge(const char* log);
    void print();

private:
    ZEMRptTable makeTable() const;

    RptInfo _info;
    int _level = 1;
    ZEMRepository _repository;
};

bool Report::merge(const char* log)
{
    const int result = _repository.processFile(log);
    if (result < 0) {
        std::cerr << " *** RptArea::report: Error processing " << log << ": "
                  << qipVLRecFile::error(result) << std::endl;
    }
    return result >= 0;
}

ZEMRptTable Report::makeTable() const
{
    switch (_info._type) {
    case RptByDirectory:
        return _repository.viewByDirectory();
    case RptByFunction:
        return _repository.viewByFunction(_level);
    case RptByClass:
        return _repository.viewByClass();
    default:
        return _repository.viewByFile();
    }
}

// One row a line, its fields separated by tabs; on a terminal the labels are padded to one length.
void Report::print()
{
    ZEMRptTable table = makeTable();
    table.sort(_info.sortKeys());
    const int width = isatty(STDOUT_FILENO) ? table.longestLabel() : 0;
    std::printf("%-*s\tcovered\tuncovered\tper cent\thits\n", width,
                RptText::typeWord(_info._type));
    for (int i = 0; i < table._nItems; ++i) {
        const ZEMView& row = *table._view[i];
        const long covered = row._covBlk;
        const long total = row._totBlk;
        std::printf("%-*s\t%ld\t%ld\t%ld%%\t%d\n", width, row._label == nullptr ? "" : row._label,
                    covered, total - covered, RptText::percent(covered, total), row._hits);
    }
    long untested = 0;
    long total = 0;
    _repository.coverageSummary(untested, total);
    std::printf("%s\n", RptText::summary(untested, total).c_str());
    table.deleteRows();
}

// The exit status of a program that has printed all it had to.
int finish(int status)
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::perror("zem-report: standard output");
        return LogFailed;
    }
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::printf("zem-report %s\n", ZEM_VERSION);
        return finish(Success);
    }
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        usage();
        return finish(Success);
    }
    // Never destroyed: the end of the process frees millions of records at once.
    static Report& report = *new Report;
    cmdln_onUsage(usage);
    RptCommandLine::parse(report, &argc, argv);
    int nLogs = 0;
    int status = Success;
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '-') {
            std::cerr << "zem-report: unknown option " << argv[i] << " ignored\n";
            continue;
        }
        ++nLogs;
        if (!report.merge(argv[i])) {
            status = LogFailed;
        }
    }
    if (nLogs == 0) {
        std::cerr << "zem-report: no log file given\n";
        usage();
        return Misused;
    }
    report.print();
    return finish(status);
}
