// SPDX-License-Identifier: MIT
//
// The disagreements that a comparison found, by class, each class with examples. A class is either
// allowed, because somebody explained it, or makes the comparison fail.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

class Findings
{
public:
    // In the order in which they are printed; each has its word and meaning in the .cpp.
    enum Class {
        UnitFailed,
        FileMissing,
        SourceMissing,
        FunctionMissing,
        FunctionDead,
        FunctionRan,
        FunctionInlined,
        FunctionShared,
        FunctionPart,
        FunctionExtra,
        LineRanRed,
        LineDeadBlack,
        LineMissing,
        LineStray,
        LinePassed,
        LinePassedRed,
        LineMade,
        LineUnlisted,
        LinePast65535,
        LinePastEnd,
        TextRed,
        NameSimple,
        NameExtended,
        NameFull,
        NClasses
    };

    // Keeps `nExamples` examples of each class.
    explicit Findings(size_t nExamples) : _nExamples(nExamples) {}

    void add(Class which, const std::string& example);
    uint64_t count(Class which) const { return _counts[which]; }
    bool wantsExample(Class which) const { return _examples[which].size() < _nExamples; }

    // Allows the class `word`, as often as `most`. Returns false when there is no such class.
    bool allow(const std::string& word, uint64_t most);
    // Allows what a text lists, one class a line: a word, perhaps a greatest number, and behind a
    // '#' the reason. Returns false, and in `problem` the line, when it is not of that form.
    bool allowListed(std::istream& text, std::string& problem);

    // True when each class that occurred is allowed that often.
    bool isGood() const;

    // Writes each class that occurred with its number, meaning and examples, and each allowed one
    // that did not occur.
    void write(std::ostream& out) const;

    // The words and their meanings.
    static void writeClasses(std::ostream& out);

private:
    bool isAllowed(int which) const;

    size_t _nExamples;
    uint64_t _counts[NClasses] = {};
    std::vector<std::string> _examples[NClasses];
    std::map<int, uint64_t> _allowed; // class > greatest number
};
