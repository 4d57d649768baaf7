// SPDX-License-Identifier: MIT
//
// zem-report: the viewer's report as text, through the same repository, rows and sort, without X.
#include "qip/Support/cmdln.h"
#include "qip/Support/qipVLFailure.h"
#include "qip/Support/qipVisibleText.h"
#include "qip/Support/standardStreams.h"
#include "zem/Options/RptCommandLine.h"
#include "zem/Options/RptOptions.h"
#include "zem/Repository/ZEMRepository.h"
#include "zem/Rows/RptInfo.h"
#include "zem/Rows/RptText.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Rows/ZEMView.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <new>
#include <string>
#include <unistd.h>

namespace {

constexpr char Program[] = "zem-report";

enum ExitStatus { Success = 0, Failed = 1, Misused = 2 };

void writeUsage(std::ostream& out)
{
    out << "Usage: zem-report [options] logfile ...\n";
    RptOptions::writeOptionLines(out);
    out << "        --help        Print this text\n"
           "        --version     Print the version\n";
}

// For whoever did not ask for it.
void usage()
{
    writeUsage(std::cerr);
}

// Bytes of the longest label as printed.
size_t longestLabel(const ZEMRptTable& table)
{
    size_t longest = 0;
    for (int i = 0; i < table._nItems; ++i) {
        longest = std::max(longest, qipVisibleText(table._view[i]->_label).length());
    }
    return longest;
}

// Prints a label, padded to `width` bytes.
void writeLabel(const char* label, size_t width)
{
    const qipVisibleText text(label);
    std::cout << text;
    for (size_t length = text.length(); length < width; ++length) {
        std::cout << ' ';
    }
}

// The options, carried out on a report of this program.
class Report : public RptOptions
{
public:
    void reportType(RptType type) override { _info._type = type; }
    void manglingLevel(int level) override { _level = level; }
    void addFilter(int kind, const char* name) override { _repository.addFilter(kind, name); }
    void sortBy(const char* keys) override;
    void showHitCounts() override {} // there is no source to show them in
    void usageHelp() override { usage(); }

    // Merges a log; false, with the viewer's message and more, when it could not be read.
    bool merge(const char* log);
    // False, with a message and nothing printed, without memory for all of it.
    bool print();

private:
    bool printRows(ZEMRptTable& table) const;

    RptInfo _info;
    int _level = 1;
    bool _hasSortKeys = true; // unless there was no memory for them
    ZEMRepository _repository;
};

bool Report::merge(const char* log)
{
    const int result = _repository.processFile(log);
    if (result < 0) {
        const char* map = _repository.failedMap();
        const qipVLFailure& failure = _repository.failure();
        RptText::beginLoadError(std::cerr, log)
            << (map[0] == '\0' ? "" : "map file ") << qipVisibleText(map)
            << (map[0] == '\0' ? "" : ": ") << failure << "; " << failure.advice() << std::endl;
    }
    return result >= 0;
}

void Report::sortBy(const char* keys)
{
    _info.sortKeys(keys);
    _hasSortKeys = keys == nullptr || keys[0] == '\0' || _info.sortKeys() != nullptr;
}

bool Report::print()
{
    ZEMRptTable table = _repository.view(_info._type, _level);
    const bool printed = table.isWhole() && _hasSortKeys && printRows(table);
    if (!printed) {
        std::cerr << " *** zem-report: out of memory for the report by "
                  << RptText::typeWord(_info._type)
                  << "; give the program more memory, fewer logs or a filter" << std::endl;
    }
    table.deleteRows();
    return printed;
}

// One row a line, its fields separated by tabs; on a terminal the labels are padded to one length.
// False, and nothing is printed, without memory.
bool Report::printRows(ZEMRptTable& table) const
{
    long untested = 0;
    long total = 0;
    _repository.coverageSummary(untested, total);
    std::string summary;
    try {
        summary = RptText::summary(untested, total);
    } catch (const std::bad_alloc&) {
        return false;
    }
    table.sort(_info.sortKeys());
    const size_t width = isatty(STDOUT_FILENO) ? longestLabel(table) : 0;
    writeLabel(RptText::typeWord(_info._type), width);
    std::cout << "\tcovered\tuncovered\tper cent\thits\n";
    for (int i = 0; i < table._nItems; ++i) {
        const ZEMView& row = *table._view[i];
        const long covered = row._covBlk;
        const long blocks = row._totBlk;
        writeLabel(row._label, width);
        std::cout << '\t' << covered << '\t' << blocks - covered << '\t'
                  << RptText::percent(covered, blocks) << "%\t" << row._hits << '\n';
    }
    std::cout << summary << '\n';
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    guardStandardStreams();
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::cout << "zem-report " << ZEM_VERSION << '\n';
        return finishStandardOutput(Program) ? Success : Failed;
    }
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        writeUsage(std::cout);
        return finishStandardOutput(Program) ? Success : Failed;
    }
    // Never destroyed: the end of the process frees millions of records at once.
    static Report* const made = new (std::nothrow) Report;
    if (made == nullptr) {
        std::cerr << " *** zem-report: out of memory" << std::endl;
        return Failed;
    }
    Report& report = *made;
    cmdln_onUsage(usage);
    RptCommandLine::parse(report, &argc, argv);
    int nLogs = 0;
    int status = Success;
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '-') {
            std::cerr << "zem-report: unknown option " << qipVisibleText(argv[i]) << " ignored\n";
            continue;
        }
        ++nLogs;
        if (!report.merge(argv[i])) {
            status = Failed;
        }
    }
    if (nLogs == 0) {
        std::cerr << "zem-report: no log file given\n";
        usage();
        return Misused;
    }
    if (!report.print()) {
        status = Failed;
    }
    return finishStandardOutput(Program) ? status : Failed;
}
