// SPDX-License-Identifier: MIT
//
// Reads a Cobertura document, plain or gzipped:
//
//   coverage [timestamp]
//     sources / source           a folder that file names count from; several, each is tried
//     packages / package / classes / class [filename]
//       methods / method [name, signature] / lines / line [number, hits]
//       lines / line [number, hits]
//
// A line that stands under a method and under its class counts once, as the class has it. A method
// reaches from the first of its lines to the last one; some writers give no more than the first, so
// the end of a method with one line is not known. Several classes of one file add up. Everything
// else is passed by.
//
// The document is read as a stream. One that declares entities is refused, so nothing in it grows;
// a document type that it names elsewhere is not fetched.
#pragma once

#include "tools/import/lines/LineTable.h"
#include "tools/import/lines/SourceRoots.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class CoberturaDocument
{
public:
    // Greater than any that a writer makes: a tag with all its attributes, in bytes, and elements
    // in each other.
    static constexpr size_t LongestTag = 1u << 20;
    static constexpr size_t DeepestElement = 100;

    // Borrows `table` for its life.
    explicit CoberturaDocument(LineTable& table) : _table(table) {}

    // Puts all classes of the document into the table as counts of the run `runName`. To be called
    // once. Returns false with problem() set when it cannot be read or is no Cobertura document.
    bool read(const std::string& path, const std::string& runName);

    // "PATH:LINE: cause", or "PATH: cause".
    const std::string& problem() const { return _problem; }

    // Source files of which several folders have one, see SourceRoots.
    std::vector<std::string> ambiguous() const;

    // Lines without a number.
    const ImportLosses& losses() const { return _losses; }

private:
    class Parser; // keeps the XML library's header away
    // What a handler of the parser knows an element by.
    enum Element : uint8_t { Coverage, Source, Class, Methods, Method, Line, Other };
    using LineHits = std::pair<uint32_t, int64_t>;

    bool fail(const std::string& cause);
    void startElement(const char* name, const char* const* attributes);
    void endElement();
    void text(const char* part, size_t size);
    void startLine(const char* const* attributes);
    void startMethod(const char* const* attributes);
    void endMethod();
    void endClass();
    void noteTime(const char* text);
    bool readPieces(Parser& parser);

    LineTable& _table;
    std::string _path;
    std::unique_ptr<SourceRoots> _roots;
    uint32_t _run = 0;
    std::vector<Element> _open; // elements around the current place
    std::string _folder;        // text of a source element
    std::string _filename;      // of the class
    std::string _method;        // its symbol
    uint32_t _methodFirst = 0;
    uint32_t _methodLast = 0;
    bool _isInMethods = false;
    bool _hasClasses = false;
    bool _hasTime = false;
    std::vector<LineHits> _classLines;
    std::vector<LineHits> _methodLines;
    struct MethodRange
    {
        std::string _symbol;
        uint32_t _first;
        uint32_t _last;
    };
    std::vector<MethodRange> _methods; // of the class
    std::string _cause;                // why a handler stops the parser
    ImportLosses _losses;
    std::string _problem;
};
