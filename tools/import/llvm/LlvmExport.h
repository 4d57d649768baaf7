// SPDX-License-Identifier: MIT
//
// Reads the functions in what "llvm-cov export" writes, a JSON document of one line:
//
//   {"data":[{"files":[...],"functions":[{"name":...,"filenames":[...],"regions":[[...],...]},...],
//   ...}],...}
//
// Takes the document piece by piece and holds one function of it at a time. A region is start line,
// start column, end line, end column, count, file, expanded file, kind (CoverageFunction.h).
#pragma once

#include "tools/import/ToolRun.h"
#include "tools/import/llvm/CoverageFunction.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct ExportedFunction
{
    std::string _name;
    std::vector<std::string> _files;
    std::vector<CoverageRegion> _regions; // without counters
    std::vector<uint64_t> _counts;        // of the regions
};

class LlvmExport : public ToolRun::Receiver
{
public:
    class Receiver
    {
    public:
        virtual ~Receiver() = default;
        // Takes the next function, which is gone afterwards. Returns false when it makes no sense.
        virtual bool function(ExportedFunction& function) = 0;
    };

    // No function has more text, in bytes.
    static constexpr size_t LargestFunction = 64u << 20;

    // Borrows `receiver` for its life.
    explicit LlvmExport(Receiver& receiver);
    ~LlvmExport() override;

    bool receive(const char* bytes, size_t size) override;

    // Whether the document was read to its end and had a list of functions.
    bool isWhole() const { return _hadFunctions && _depth == 0 && !_isInText; }

private:
    class Parser;

    bool take(char byte);
    void open(char byte);
    bool close();

    Receiver& _receiver;
    std::unique_ptr<Parser> _parser;
    std::string _function; // that is being read
    std::string _text;     // the beginning of the last text outside of functions
    size_t _depth = 0;     // of brackets and braces
    bool _isInText = false;
    bool _isEscaped = false;
    bool _isInFunctions = false;
    bool _hadFunctions = false;
};
