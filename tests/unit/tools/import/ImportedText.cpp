// SPDX-License-Identifier: MIT
#include "tests/unit/tools/import/ImportedText.h"

#include "tests/support/StdErr.h"

#include <algorithm>
#include <vector>

namespace {

using Lines = std::map<std::pair<uint32_t, uint32_t>, int64_t>; // file and line > count

Lines linesOf(const ImportedBuild& build, const std::vector<int64_t>& counts)
{
    Lines lines;
    for (const FunctionCopy& copy : build._copies) {
        for (const CopyLine& line : copy._lines) {
            lines[{line._file, line._line}] += counts[copy._firstCount + line._block];
        }
    }
    return lines;
}

std::string text(const FunctionCopy& copy, const std::vector<std::string>& paths)
{
    std::string result = paths[copy._file] + " " + copy._symbol + " " +
                         std::to_string(copy._startLine) + "-" + std::to_string(copy._endLine) +
                         (copy._isHidden ? " hidden:" : ":");
    for (const CopyLine& line : copy._lines) {
        result += " " + std::to_string(line._line);
    }
    return result + "\n";
}

} // namespace

ImportedText::ImportedText(Importer& importer)
{
    StdErr problems;
    SourceFilter filter;
    filter.keepSystem();
    ImportedBuild build(filter);
    _isRead = importer.readBuild(build, _losses, 2);
    for (FunctionCopy& copy : build._copies) {
        copy.spreadLines();
    }
    Lines all;
    for (size_t i = 0; _isRead && i < importer.runs(); ++i) {
        ImportedRun run;
        _isRead = importer.readRun(i, run, _losses, 2);
        _runs += run._name + ":\n";
        _times += std::to_string(run._executionTime) + "\n";
        uint32_t file = UINT32_MAX;
        for (const auto& line : linesOf(build, run._counts)) {
            if (line.first.first != file) {
                _runs += file == UINT32_MAX ? "" : "\n";
                file = line.first.first;
                _runs += build._sources.paths()[file];
            }
            _runs += " " + std::to_string(line.first.second) + "=" + std::to_string(line.second);
            all[line.first] += line.second;
        }
        _runs += "\n";
    }
    std::vector<std::string> functions;
    for (const FunctionCopy& copy : build._copies) {
        functions.push_back(text(copy, build._sources.paths()));
    }
    std::sort(functions.begin(), functions.end());
    for (const std::string& function : functions) {
        _functions += function;
    }
    _total = {0, all.size()};
    for (const auto& line : all) {
        _total.first += line.second != 0 ? 1 : 0;
    }
    _problems = problems.text();
}
