// SPDX-License-Identifier: MIT
//
// zem-dump: the headers and records of map and log files as text, for looking into a file that the
// viewer does not show as expected. What was read before a file turned out to be damaged is printed
// as well.
#include "qip/Support/ListIterator.h"
#include "qip/Support/asksFor.h"
#include "qip/Support/endWithoutMemory.h"
#include "qip/Support/qipVisibleText.h"
#include "qip/Support/standardStreams.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"

#include <cstring>
#include <iostream>

namespace {

constexpr char Program[] = "zem-dump";

enum ExitStatus { Success = 0, Failed = 1, Misused = 2 };

void usage(std::ostream& out)
{
    out << "Usage: zem-dump file ...\n"
           "Prints the headers and records of coverage map and log files as text.\n"
           "        --help        Print this text\n"
           "        --version     Print the version\n";
}

// Prints a file of which `opened` is the result of its opening, if that went well. Returns the
// result of opening and loading it.
int dump(qipVLRecFile& file, int opened)
{
    if (opened != qipVLRecFile::NoError) {
        return opened;
    }
    const int result = file.load();
    std::cout << file.header();
    file.dump(std::cout);
    return result;
}

int dumpLog(const char* name, qipVLFailure& failure)
{
    ZEMLogFile file;
    const int result = dump(file, file.open(name, qipVLRecFile::READ));
    failure = file.failure();
    return result;
}

int dumpMap(const char* name, qipVLFailure& failure)
{
    ZEMMapFile file;
    const int result = dump(file, file.open(name, qipVLRecFile::READ));
    failure = file.failure();
    ListIterator<ZEMFileRecord*> files(file.toc());
    while (const ZEMFileRecord* record = files.next()) {
        delete record;
    }
    return result;
}

// Returns false, with a message, for a file that could not be read whole.
bool dumpFile(const char* name)
{
    qipVLFailure failure;
    int result = dumpMap(name, failure);
    if (result == qipVLRecFile::BadMagic) {
        result = dumpLog(name, failure);
    }
    if (result < 0) {
        std::cout.flush(); // before the message
        std::cerr << "zem-dump: " << qipVisibleText(name) << ": " << failure << "; "
                  << failure.advice() << std::endl;
    }
    return result >= 0;
}

int dumpFiles(int count, char** names)
{
    int status = Success;
    for (int i = 0; i < count; ++i) {
        if (count > 1) {
            std::cout << (i == 0 ? "" : "\n") << "==> " << qipVisibleText(names[i]) << " <==\n";
        }
        if (!dumpFile(names[i])) {
            status = Failed;
        }
    }
    return finishStandardOutput(Program) ? status : Failed;
}

} // namespace

int main(int argc, char** argv)
{
    endWithoutMemory(Program, Failed);
    guardStandardStreams();
    if (asksFor("--version", argc, argv)) {
        std::cout << "zem-dump " << ZEM_VERSION << "\n";
        return finishStandardOutput(Program) ? Success : Failed;
    }
    if (asksFor("--help", argc, argv)) {
        usage(std::cout);
        return finishStandardOutput(Program) ? Success : Failed;
    }
    int first = 1;
    if (argc > 1 && std::strcmp(argv[1], "--") == 0) {
        first = 2;
    } else if (argc > 1 && argv[1][0] == '-') {
        std::cerr << "zem-dump: unknown option " << qipVisibleText(argv[1]) << "\n";
        usage(std::cerr);
        return Misused;
    }
    if (first == argc) {
        std::cerr << "zem-dump: no file given\n";
        usage(std::cerr);
        return Misused;
    }
    return dumpFiles(argc - first, argv + first);
}
