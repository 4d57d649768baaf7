// SPDX-License-Identifier: MIT
//
// zem-dump: the headers and records of map and log files as text, for looking into a file that the
// viewer does not show as expected. What was read before a file turned out to be damaged is printed
// as well.
#include "qip/Support/ListIterator.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"

#include <cstdio>
#include <cstring>
#include <iostream>

namespace {

enum ExitStatus { Success = 0, FileFailed = 1, Misused = 2 };

void usage(std::ostream& out)
{
    out << "Usage: zem-dump file ...\n"
           "Prints the headers and records of coverage map and log files as text.\n"
           "        --help        Print this text\n"
           "        --version     Print the version\n";
}

// Prints a file that is open. Returns what load() returned.
int dump(qipVLRecFile& file)
{
    const int result = file.load();
    std::cout << file.header();
    file.dump(std::cout);
    return result;
}

int dumpLog(const char* name)
{
    ZEMLogFile file;
    const int result = file.open(name, qipVLRecFile::READ);
    return result == qipVLRecFile::NoError ? dump(file) : result;
}

int dumpMap(const char* name)
{
    ZEMMapFile file;
    int result = file.open(name, qipVLRecFile::READ);
    if (result == qipVLRecFile::NoError) {
        result = dump(file);
    }
    ListIterator<ZEMFileRecord*> files(file.toc());
    while (const ZEMFileRecord* record = files.next()) {
        delete record;
    }
    return result;
}

// Returns false, with a message, for a file that could not be read whole.
bool dumpFile(const char* name)
{
    int result = dumpMap(name);
    if (result == qipVLRecFile::BadMagic) {
        result = dumpLog(name);
    }
    std::cout.flush();
    if (result < 0) {
        std::cerr << "zem-dump: " << name << ": " << qipVLRecFile::error(result) << std::endl;
    }
    return result >= 0;
}

int dumpFiles(int count, char** names)
{
    int status = Success;
    for (int i = 0; i < count; ++i) {
        if (count > 1) {
            std::cout << (i == 0 ? "" : "\n") << "==> " << names[i] << " <==\n";
        }
        if (!dumpFile(names[i])) {
            status = FileFailed;
        }
    }
    return status;
}

// The exit status of a program that has printed all it had to.
int finish(int status)
{
    if (!std::cout.flush()) {
        std::perror("zem-dump: standard output");
        return FileFailed;
    }
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::cout << "zem-dump " << ZEM_VERSION << "\n";
        return finish(Success);
    }
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        usage(std::cout);
        return finish(Success);
    }
    int first = 1;
    if (argc > 1 && std::strcmp(argv[1], "--") == 0) {
        first = 2;
    } else if (argc > 1 && argv[1][0] == '-') {
        std::cerr << "zem-dump: unknown option " << argv[1] << "\n";
        usage(std::cerr);
        return Misused;
    }
    if (first == argc) {
        std::cerr << "zem-dump: no file given\n";
        usage(std::cerr);
        return Misused;
    }
    return finish(dumpFiles(argc - first, argv + first));
}
