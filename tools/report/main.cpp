// SPDX-License-Identifier: MIT
//
// zem-report: the viewer's report as text and in the formats of other tools, without X.
#include "qip/Support/asksFor.h"
#include "qip/Support/cmdln.h"
#include "qip/Support/endWithoutMemory.h"
#include "qip/Support/qipVisibleText.h"
#include "qip/Support/standardStreams.h"
#include "tools/common/PendingFile.h"
#include "tools/formats/ReportFile.h"
#include "tools/formats/TextStyle.h"
#include "tools/formats/makeReportWriter.h"
#include "tools/report/Report.h"
#include "tools/report/ReportCommandLine.h"
#include "tools/report/ReportLimits.h"
#include "zem/Options/RptCommandLine.h"

#include <cstring>
#include <iostream>
#include <memory>
#include <new>
#include <unistd.h>

namespace {

constexpr char Program[] = "zem-report";

// In the order of their weight: numbers that are not whole first, then numbers that were asked for
// in the wrong way, then those that are not enough.
enum ExitStatus {
    Success = 0,
    Failed = 1,
    Misused = 2,
    WholeUnder = 3, // these two add up
    RowUnder = 4,
    BothUnder = 5,
};

void writeUsage(std::ostream& out)
{
    out << "Usage: zem-report [options] logfile ...\n";
    RptOptions::writeOptionLines(out);
    ReportCommandLine::writeOptionLines(out);
    out << "        --help        Print this text\n"
           "        --version     Print the version\n";
}

// For whoever did not ask for it.
void usage()
{
    writeUsage(std::cerr);
}

int adviseHelp()
{
    std::cerr << "zem-report: zem-report --help lists the options" << std::endl;
    return Misused;
}

TextStyle styleFor(const ReportCommandLine& options, const ReportCommandLine::Output& output)
{
    const bool isTerminal = output._file == nullptr && isatty(STDOUT_FILENO) != 0;
    TextStyle style;
    style._isOnTerminal = isTerminal;
    style._isPadded = isTerminal;
    style._hasBars = isTerminal;
    style._hasColours = output._file == nullptr && options.hasColours(isTerminal);
    style._namesTotals = isTerminal || options.namesTotals();
    style._limit = options.rowLimit();
    return style;
}

bool complainOfFile(const char* path, const ReportFile& file)
{
    std::cerr << "zem-report: cannot write " << qipVisibleText(path) << ": " << file.problem()
              << std::endl;
    return false;
}

// Writes one output; false with a message when that is not done.
bool writeOutput(const Report& report, const ReportCommandLine& options,
                 const ReportCommandLine::Output& output)
{
    TextStyle style = styleFor(options, output);
    if (output._file == nullptr) {
        const std::unique_ptr<ReportWriter> writer = makeReportWriter(output._format, style);
        const bool isPrinted = writer && writer->print(report.contents(), std::cout);
        if (!isPrinted) {
            report.complainOfMemory();
        }
        return isPrinted;
    }
    // Where the program ends in the middle of a name for which there is no memory, the destructors
    // of static objects still run, and the file is removed.
    static std::unique_ptr<ReportFile> file;
    file = std::make_unique<ReportFile>();
    if (!file->open(output._file)) {
        return complainOfFile(output._file, *file);
    }
    style._isOnTerminal = file->isTerminal();
    const std::unique_ptr<ReportWriter> writer = makeReportWriter(output._format, style);
    if (!writer || !writer->print(report.contents(), file->stream())) {
        report.complainOfMemory();
        file.reset();
        return false;
    }
    const bool isDone = file->close() || complainOfFile(output._file, *file);
    file.reset();
    return isDone;
}

// An empty table would pass for the report of a program without code.
bool isWorthPrinting(const Report& report)
{
    return !report.contents()._logs.empty();
}

// Where a person waits for a text the messages about the logs are enough.
void tellOfNothing(const ReportCommandLine::Output& output)
{
    if (std::strcmp(output._format, "text") != 0) {
        std::cerr << "zem-report: nothing is printed: no log was merged" << std::endl;
    }
}

// Files get only what all logs together say: who reads them does not see what is missing.
bool writeOutputs(const Report& report, const ReportCommandLine& options, bool hasAllLogs)
{
    bool isDone = true;
    for (const ReportCommandLine::Output& output : options.outputs()) {
        if (output._file != nullptr) {
            PendingFile::removeOnSignals();
            if (!hasAllLogs) {
                std::cerr << "zem-report: " << qipVisibleText(output._file)
                          << " is not written: not every log was merged" << std::endl;
                continue;
            }
        } else if (!isWorthPrinting(report)) {
            tellOfNothing(output);
            continue;
        }
        try {
            isDone = writeOutput(report, options, output) && isDone;
        } catch (const std::bad_alloc&) {
            report.complainOfMemory();
            isDone = false;
        }
    }
    return isDone;
}

// Merges the logs among the words that are left. Returns a status; Misused when there is none.
int mergeLogs(Report& report, int argc, char** argv)
{
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
    return status;
}

// A long option that is not known is no matter of looks: it may be a limit with a letter wrong.
bool hasUnknownOption(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--", 2) == 0) {
            std::cerr << "zem-report: unknown option " << qipVisibleText(argv[i]) << std::endl;
            return true;
        }
    }
    return false;
}

int judge(const Report& report, const ReportCommandLine& options)
{
    const ReportLimits limits(options.wholeLimit(), options.rowLimit());
    const bool isWholeUnder = limits.isWholeUnder(report.contents());
    const bool isARowUnder = limits.isARowUnder(report.contents());
    return isWholeUnder ? (isARowUnder ? BothUnder : WholeUnder)
                        : (isARowUnder ? RowUnder : Success);
}

int run(Report& report, const ReportCommandLine& options, int argc, char** argv)
{
    const int merged = mergeLogs(report, argc, argv);
    if (merged == Misused) {
        return Misused;
    }
    const bool hasAllNames = report.findNames();
    if (!report.prepare() || !writeOutputs(report, options, merged == Success)) {
        return Failed;
    }
    const int judged = judge(report, options);
    return merged != Success ? merged : !hasAllNames ? Misused : judged;
}

int printOnly(void (*write)(std::ostream& out))
{
    write(std::cout);
    return finishStandardOutput(Program) ? Success : Failed;
}

int withoutMemory()
{
    std::cerr << " *** zem-report: out of memory" << std::endl;
    return Failed;
}

} // namespace

int main(int argc, char** argv)
{
    endWithoutMemory(" *** zem-report", Failed);
    guardStandardStreams();
    if (asksFor("--version", argc, argv)) {
        return printOnly([](std::ostream& out) { out << "zem-report " << ZEM_VERSION << '\n'; });
    }
    if (asksFor("--help", argc, argv)) {
        return printOnly(writeUsage);
    }
    // Never destroyed: the end of the process frees millions of records at once.
    static Report* const report = new (std::nothrow) Report("zem-report " ZEM_VERSION, usage);
    if (report == nullptr) {
        return withoutMemory();
    }
    ReportCommandLine options;
    try {
        if (!options.take(&argc, argv)) {
            return adviseHelp();
        }
    } catch (const std::bad_alloc&) {
        return withoutMemory();
    }
    cmdln_onUsage(usage);
    RptCommandLine::parse(*report, &argc, argv);
    if (hasUnknownOption(argc, argv)) {
        return adviseHelp();
    }
    int status = Failed;
    try {
        status = run(*report, options, argc, argv);
    } catch (const std::bad_alloc&) {
        report->complainOfMemory();
    }
    return finishStandardOutput(Program) ? status : Failed;
}
