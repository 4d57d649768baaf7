// SPDX-License-Identifier: MIT
//
// Compares what the viewer shows of a map and log with what is known about the build: each line
// that gcov lists must be red when its count is 0 and not red otherwise, each function must have a
// row, and each row c++filt's name.
#pragma once

#include "tools/compare/BuildFacts.h"
#include "tools/compare/Findings.h"

#include <iosfwd>
#include <string>
#include <vector>

class DrawnFile;
class ZEMFileRecord;
class ZEMRepository;

class CoverageComparison
{
public:
    // Borrows `facts` while it lives; keeps `nExamples` examples of each class.
    CoverageComparison(const BuildFacts& facts, size_t nExamples);

    // Compares with all source files of `repository`.
    void run(const ZEMRepository& repository);

    Findings& findings() { return _findings; }

    // Writes how many functions, lines and names agree.
    void writeTotals(std::ostream& out) const;

private:
    struct Agreement
    {
        uint64_t _all = 0;
        uint64_t _agree = 0;

        bool add(bool agrees);
    };
    struct Row;

    void compareFile(const std::string& path, const FileFacts& facts, const ZEMFileRecord& record);
    void compareLines(const std::string& path, const FileFacts& facts, const ZEMFileRecord& record);
    void compareLine(const std::string& path, uint32_t line, const LineFacts& facts,
                     DrawnFile& drawn);
    void compareUnlisted(const std::string& path, uint32_t line, const LineFacts& facts,
                         DrawnFile& drawn);
    void addLine(Findings::Class which, const std::string& path, uint32_t line,
                 const LineFacts& facts, DrawnFile& drawn);
    void compareFunctions(const std::string& path, const FileFacts& facts,
                          const ZEMFileRecord& record);
    void compareRow(const std::string& path, const FileFacts& facts, const Row& row);
    void compareNames(const std::string& path, const Row& row);

    bool isFunction(const std::string& shown);

    const BuildFacts& _facts;
    std::vector<std::string> _names; // of all functions, filled when first needed
    Findings _findings;
    Agreement _functions;
    Agreement _lines;
    uint64_t _linesRun = 0;
    Agreement _rowNames[3];
};
