// SPDX-License-Identifier: MIT
#include "tools/import/gcov/JsonDocuments.h"

namespace {

constexpr size_t PieceSize = 64 * 1024;

// In strings such characters are written in another way. The holes of a file are full of them.
bool isForbidden(char c)
{
    return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\r' && c != '\n';
}

} // namespace

bool JsonDocuments::fail(const std::string& problem)
{
    _problem = problem;
    return false;
}

bool JsonDocuments::open(const std::string& path)
{
    _piece.resize(PieceSize);
    return _input.open(path) || fail(_input.problem());
}

// Gets more bytes when all have been used. Returns false at the end, too.
bool JsonDocuments::refill()
{
    if (_used < _size) {
        return true;
    }
    _used = 0;
    _size = 0;
    if (!_input.read(_piece.data(), _piece.size(), _size)) {
        return fail(_input.problem());
    }
    return _size != 0;
}

// Moves to the next document.
bool JsonDocuments::skipBlank()
{
    while (refill()) {
        for (; _used < _size; ++_used) {
            const char c = _piece[_used];
            _line += c == '\n' ? 1 : 0;
            if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
                return true;
            }
        }
    }
    return false;
}

// Takes a character of the document; returns whether it is the last one.
bool JsonDocuments::isDone(char c)
{
    if (_isInString) {
        _isInString = _isEscaped || c != '"';
        _isEscaped = !_isEscaped && c == '\\';
        return false;
    }
    switch (c) {
    case '"':
        _isInString = true;
        return false;
    case '{':
    case '[':
        ++_depth;
        return false;
    case '}':
    case ']':
        return --_depth == 0;
    case '\n':
        ++_line;
        return false;
    default:
        return false;
    }
}

bool JsonDocuments::next(std::string& document)
{
    document.clear();
    if (!skipBlank()) {
        return false;
    }
    _documentLine = _line;
    if (_piece[_used] != '{') {
        return fail("it is no JSON: a document begins with {");
    }
    _depth = 0;
    _isInString = _isEscaped = false;
    while (refill()) {
        const size_t start = _used;
        bool isComplete = false;
        while (_used < _size && !isComplete) {
            if (isForbidden(_piece[_used])) {
                return fail("it is no JSON: a control character on line " + std::to_string(_line));
            }
            isComplete = isDone(_piece[_used++]);
        }
        if (document.size() + (_used - start) > _largest) {
            return fail("one document has more than " + std::to_string(_largest >> 20) + " MiB");
        }
        document.append(_piece.data() + start, _used - start);
        if (isComplete) {
            return true;
        }
    }
    return _problem.empty() ? fail("the file ends within a document: it is cut short") : false;
}
