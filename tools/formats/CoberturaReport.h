// SPDX-License-Identifier: MIT
//
// A report as Cobertura XML (coverage-04), which CI servers read: directories are packages, files
// are classes. docs/formats/cobertura.md explains it.
#pragma once

#include "tools/formats/LineCounts.h"
#include "tools/formats/ReportWriter.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class ZEMFileRecord;
class ZEMFuncRecord;

class CoberturaReport : public ReportWriter
{
public:
    // Lines that the methods of one file may have together: 16 functions in each other, each of all
    // lines that a map can tell apart. Those that would exceed it have none of their own.
    static constexpr int64_t MostMethodLines = 16 * 65535;

protected:
    void write(const ReportContents& contents, std::ostream& out) override;

private:
    // Lines, and those of them that ran.
    struct Rate
    {
        int64_t found = 0;
        int64_t run = 0;
    };
    struct File
    {
        const ZEMFileRecord* record;
        Rate rate;
        size_t next; // of its package, or None
    };
    struct Package
    {
        std::string name;
        Rate rate;
        size_t first; // index of a file, or None
        size_t last;
    };
    static constexpr size_t None = SIZE_MAX;

    void gather(const ReportContents& contents);
    void findRoot();
    void count(const ReportContents& contents, const ZEMFileRecord& file);
    void writePackage(const ReportContents& contents, const Package& package, std::ostream& out);
    void writeClass(const ReportContents& contents, const File& file, std::ostream& out);
    void writeMethod(const ReportContents& contents, const ZEMFuncRecord& function,
                     std::ostream& out);
    void writeLines(const char* indent, std::ostream& out) const;
    const char* shortened(const ZEMFileRecord& file) const;

    std::vector<File> _files;       // that are shown
    std::vector<Package> _packages; // in the order met
    std::string _root;              // the directory of all files with its slash, or empty
    Rate _whole;
    LineCounts _lines;        // of the file or function at hand
    int64_t _methodLines = 0; // that those of the file at hand have
};
