// SPDX-License-Identifier: MIT
#include "tools/import/cobertura/CoberturaDocument.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/SourcePath.h"
#include "tools/import/lines/InputStream.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <expat.h>

namespace {

constexpr int PieceSize = 64 * 1024;

// The value of an attribute, or null. `attributes` are names and values in turn.
const char* valueOf(const char* const* attributes, const char* name)
{
    for (; *attributes != nullptr; attributes += 2) {
        if (std::strcmp(attributes[0], name) == 0) {
            return attributes[1];
        }
    }
    return nullptr;
}

// A whole number; one past 64 bits ends at the limit.
bool readNumber(const char* text, int64_t& number)
{
    if (text == nullptr || (*text != '-' && (*text < '0' || *text > '9'))) {
        return false;
    }
    char* end = nullptr;
    number = std::strtoll(text, &end, 10);
    return end != text && *end == '\0';
}

std::string trimmed(const std::string& text)
{
    static const char blank[] = " \t\r\n";
    const size_t first = text.find_first_not_of(blank);
    return first == std::string::npos
               ? std::string()
               : text.substr(first, text.find_last_not_of(blank) - first + 1);
}

} // namespace

// The XML library's parser, whose handlers hand over to the document.
class CoberturaDocument::Parser
{
public:
    explicit Parser(CoberturaDocument& document)
        : _document(document), _parser(XML_ParserCreate(nullptr))
    {
        if (_parser == nullptr) {
            return;
        }
        XML_SetUserData(_parser, this);
        XML_SetElementHandler(_parser, start, end);
        XML_SetCharacterDataHandler(_parser, text);
        XML_SetEntityDeclHandler(_parser, entity);
    }
    ~Parser()
    {
        if (_parser != nullptr) {
            XML_ParserFree(_parser);
        }
    }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    bool isMade() const { return _parser != nullptr; }
    // Room for the next piece; null when there is no memory.
    char* piece() { return static_cast<char*>(XML_GetBuffer(_parser, PieceSize)); }
    // Takes `size` bytes that were put there.
    bool take(size_t size, bool isLast)
    {
        _given += size;
        return XML_ParseBuffer(_parser, static_cast<int>(size), isLast ? 1 : 0) == XML_STATUS_OK;
    }
    uint64_t line() const { return XML_GetCurrentLineNumber(_parser); }
    // How many bytes of a tag, a comment or the like are there whose end is still to come.
    uint64_t unfinished() const
    {
        const XML_Index at = XML_GetCurrentByteIndex(_parser);
        return at < 0 ? 0 : _given - std::min(_given, static_cast<uint64_t>(at));
    }
    const char* problem() const { return XML_ErrorString(XML_GetErrorCode(_parser)); }

private:
    // Stops when the document has found something wrong.
    void check()
    {
        if (!_document._cause.empty()) {
            XML_StopParser(_parser, XML_FALSE);
        }
    }
    static void XMLCALL start(void* data, const XML_Char* name, const XML_Char** attributes)
    {
        Parser& self = *static_cast<Parser*>(data);
        if (self._document._cause.empty()) {
            self._document.startElement(name, attributes);
            self.check();
        }
    }
    static void XMLCALL end(void* data, const XML_Char* /*name*/)
    {
        Parser& self = *static_cast<Parser*>(data);
        if (self._document._cause.empty()) {
            self._document.endElement();
            self.check();
        }
    }
    static void XMLCALL text(void* data, const XML_Char* part, int size)
    {
        Parser& self = *static_cast<Parser*>(data);
        if (self._document._cause.empty()) {
            self._document.text(part, static_cast<size_t>(size));
            self.check();
        }
    }
    static void XMLCALL entity(void* data, const XML_Char* /*name*/, int /*isParameter*/,
                               const XML_Char* /*value*/, int /*length*/, const XML_Char* /*base*/,
                               const XML_Char* /*system*/, const XML_Char* /*publicName*/,
                               const XML_Char* /*notation*/)
    {
        Parser& self = *static_cast<Parser*>(data);
        self._document._cause = "it declares entities of its own, which no coverage tool does";
        self.check();
    }

    CoberturaDocument& _document;
    XML_Parser _parser;
    uint64_t _given = 0; // bytes
};

bool CoberturaDocument::fail(const std::string& cause)
{
    _problem = _path + ": " + cause;
    return false;
}

std::vector<std::string> CoberturaDocument::ambiguous() const
{
    return _roots != nullptr ? _roots->ambiguous() : std::vector<std::string>();
}

bool CoberturaDocument::read(const std::string& path, const std::string& runName)
{
    _path = path;
    _roots = std::make_unique<SourceRoots>(path);
    _run = _table.addRun(runName);
    Parser parser(*this);
    if (!parser.isMade()) {
        return fail("there is no memory to read it");
    }
    if (!readPieces(parser)) {
        return false;
    }
    if (!_hasTime) {
        _table.noteTime(_run, modificationTime(path));
    }
    return _hasClasses || fail("no class with a filename in it: is it a Cobertura document?");
}

bool CoberturaDocument::readPieces(Parser& parser)
{
    InputStream input;
    if (!input.open(_path)) {
        return fail(input.problem());
    }
    for (bool isLast = false; !isLast;) {
        char* piece = parser.piece();
        size_t size = 0;
        if (piece == nullptr) {
            return fail("there is no memory to read it");
        }
        if (!input.read(piece, PieceSize, size)) {
            return fail(input.problem());
        }
        isLast = size < PieceSize;
        if (!parser.take(size, isLast)) {
            const std::string cause =
                _cause.empty() ? std::string("the XML is damaged: ") + parser.problem() : _cause;
            _path += ":" + std::to_string(parser.line());
            return fail(cause);
        }
        if (parser.unfinished() > LongestTag) {
            _path += ":" + std::to_string(parser.line());
            return fail("a tag or a comment has more than " + std::to_string(LongestTag) +
                        " bytes");
        }
    }
    return true;
}

void CoberturaDocument::startElement(const char* name, const char* const* attributes)
{
    static const struct
    {
        const char* name;
        Element element;
    } elements[] = {{"line", Line},       {"class", Class},   {"method", Method},
                    {"methods", Methods}, {"source", Source}, {"coverage", Coverage}};
    Element element = Other;
    for (const auto& known : elements) {
        if (std::strcmp(name, known.name) == 0) {
            element = known.element;
            break;
        }
    }
    if (_open.size() >= DeepestElement) {
        _cause = "its elements are nested more than " + std::to_string(DeepestElement) + " deep";
        return;
    }
    if (_open.empty() && element != Coverage) {
        _cause = "its outermost element is <" + std::string(name).substr(0, 40) +
                 ">: that of Cobertura is <coverage>";
        return;
    }
    _open.push_back(element);
    switch (element) {
    case Coverage:
        noteTime(valueOf(attributes, "timestamp"));
        break;
    case Source:
        _folder.clear();
        break;
    case Class: {
        const char* filename = valueOf(attributes, "filename");
        if (!_filename.empty()) {
            _cause = "a class within a class";
        } else if (filename == nullptr || *filename == '\0') {
            _cause = "a class has no filename";
        } else {
            _filename = filename;
            _hasClasses = true;
        }
        break;
    }
    case Methods:
        _isInMethods = true;
        break;
    case Method:
        startMethod(attributes);
        break;
    case Line:
        startLine(attributes);
        break;
    case Other:
        break;
    }
}

// Seconds since the epoch; some writers give milliseconds.
void CoberturaDocument::noteTime(const char* text)
{
    constexpr int64_t LeastMilliseconds = 100000000000; // seconds of the year 5138
    int64_t time = 0;
    if (readNumber(text, time) && time > 0) {
        _hasTime = true;
        time = time >= LeastMilliseconds ? time / 1000 : time;
        _table.noteTime(_run, static_cast<uint32_t>(std::min<int64_t>(time, UINT32_MAX)));
    }
}

void CoberturaDocument::startMethod(const char* const* attributes)
{
    const char* name = valueOf(attributes, "name");
    const char* signature = valueOf(attributes, "signature");
    if (name == nullptr || *name == '\0') {
        _cause = "a method has no name";
        return;
    }
    _method = name;
    _methodFirst = 0;
    _methodLast = 0;
    // The parameters of a C++ function; other languages have their own codes there.
    const size_t length = signature != nullptr ? std::strlen(signature) : 0;
    if (length > 2 && signature[0] == '(' && signature[length - 1] == ')' &&
        _method.find('(') == std::string::npos) {
        _method += signature;
    }
}

void CoberturaDocument::startLine(const char* const* attributes)
{
    if (_filename.empty()) {
        return;
    }
    int64_t number = 0;
    int64_t hits = 0;
    if (!readNumber(valueOf(attributes, "number"), number) ||
        !readNumber(valueOf(attributes, "hits"), hits) || number < 0 || number >= UINT32_MAX) {
        _cause = "the number or the hits of a line are missing, or no number of a line";
        return;
    }
    if (number == 0) {
        _losses._linesWithoutNumber += _isInMethods ? 0 : 1;
        return;
    }
    const auto line = static_cast<uint32_t>(number);
    if (!_isInMethods) {
        _classLines.emplace_back(line, hits);
        return;
    }
    _methodLines.emplace_back(line, hits);
    _methodFirst = _methodFirst == 0 ? line : std::min(_methodFirst, line);
    _methodLast = std::max(_methodLast, line);
}

void CoberturaDocument::endMethod()
{
    if (_methodFirst != 0) {
        _methods.push_back({_method, _methodFirst, _methodLast != _methodFirst ? _methodLast : 0});
    }
}

// Hands the class over. Lines that only its methods have count, too.
void CoberturaDocument::endClass()
{
    _table.beginSection(_table.file(_roots->find(_filename)), _run);
    for (const MethodRange& method : _methods) {
        _table.addFunction(method._symbol.data(), method._symbol.size(), method._first,
                           method._last);
    }
    for (const LineHits& line : _classLines) {
        _table.addLine(line.first, line.second);
    }
    if (!_methodLines.empty()) {
        std::sort(_classLines.begin(), _classLines.end());
    }
    for (const LineHits& line : _methodLines) {
        const auto found = std::lower_bound(_classLines.begin(), _classLines.end(),
                                            LineHits(line.first, INT64_MIN));
        if (found == _classLines.end() || found->first != line.first) {
            _table.addLine(line.first, line.second);
        }
    }
    _table.endSection();
    _filename.clear();
    _classLines.clear();
    _methodLines.clear();
    _methods.clear();
    _isInMethods = false;
}

void CoberturaDocument::endElement()
{
    const Element element = _open.back();
    _open.pop_back();
    if (element == Source && !_roots->add(trimmed(_folder))) {
        _cause = "it lists more than " + std::to_string(SourceRoots::MostFolders) + " sources";
    } else if (element == Methods) {
        _isInMethods = false;
    } else if (element == Method) {
        endMethod();
    } else if (element == Class) {
        endClass();
    }
}

void CoberturaDocument::text(const char* part, size_t size)
{
    if (_open.empty() || _open.back() != Source) {
        return;
    }
    _folder.append(part, size);
    if (_folder.size() > LongestTag) {
        _cause = "the path of a source has more than " + std::to_string(LongestTag) + " bytes";
    }
}
