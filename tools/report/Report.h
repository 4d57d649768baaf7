// SPDX-License-Identifier: MIT
//
// The viewer's options, carried out on a report that is written instead of shown: through the same
// repository, rows and sort.
//
// Life cycle:  options > merge() for each log > findNames() > prepare() > contents()
#pragma once

#include "qip/Support/List.h"
#include "tools/formats/ReportContents.h"
#include "zem/Options/RptOptions.h"
#include "zem/Repository/ZEMRepository.h"
#include "zem/Rows/NameLevel.h"
#include "zem/Rows/RptInfo.h"
#include "zem/Rows/ZEMRptTable.h"

#include <memory>
#include <vector>

class Report : public RptOptions
{
public:
    // `usage` prints the program's usage text, `version` is its name and version.
    Report(const char* version, void (*usage)());
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    ~Report() override;

    void reportType(RptType type) override { _info._type = type; }
    void manglingLevel(int level) override;
    bool otherManglingLetter(char letter) override;
    void addFilter(int kind, const char* name) override;
    void sortBy(const char* keys) override;
    void showHitCounts() override {} // there is no source to show them in
    void usageHelp() override { _usage(); }

    // Merges a log; false, with a message, when it could not be read whole, or does not fit its map
    // or those before it.
    bool merge(const char* log);

    // Finds what the filters name; false, with a message for each, when there is nothing of a name.
    bool findNames();

    // Makes the rows and sums; false, with a message, without memory for all of it.
    bool prepare();

    // REQUIRES: prepare() returned true.
    const ReportContents& contents() const { return _contents; }

    // Prints that memory ran out.
    void complainOfMemory() const;

private:
    static bool complainOfMisfits(const char* log, long nMisfits);
    bool findNames(char kind);
    void complainOfName(char kind, const char* name) const;
    bool keep(char kind, const char* name);
    bool makeContents();

    void (*_usage)();
    RptInfo _info;
    int _level = SimpleNames;
    bool _isWhole = true; // unless there was no memory for a log's name, a filter or the sort keys
    ZEMRepository _repository;
    ZEMRptTable _table;
    // As the repository has them.
    List<char*> _fileNames;
    List<char*> _functionNames;
    List<char*> _classNames;
    List<char*> _directoryNames;
    std::unique_ptr<ShownCode> _shown;
    ReportContents _contents;
};
