// SPDX-License-Identifier: MIT
#include "zem/Lines/LineIndex.h"

#include "qip/Support/qipOpenFile.h"
#include "zem/Lines/LinePage.h"
#include "zem/Lines/TextLine.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <unistd.h>
#include <utility>

namespace {

constexpr int TabWidth = 8;
constexpr size_t ChunkSize = 64 * 1024;

} // namespace

// Notes the lines of a stream, a chunk at a time. May throw std::bad_alloc.
class LineIndex::Scanner
{
public:
    // Borrows `lines`, which is empty.
    Scanner(LineStarts& lines, long offset)
        : _lines(lines), _position(offset), _lineStart(offset), _maxLineSz(0)
    {
        begin();
    }

    // Returns false when there are too many lines or bytes.
    bool feed(const char* bytes, size_t size)
    {
        for (size_t i = 0; i < size; ++i) {
            ++_position;
            if (bytes[i] == '\t') {
                _lines.addTab();
            } else if (bytes[i] == '\n') {
                _maxLineSz = std::max(_maxLineSz, _position - _lineStart);
                begin();
            }
        }
        // A file that grows while it is read must not go on for ever.
        return _position <= LineIndex::LargestFile &&
               _lines.count() <= static_cast<size_t>(LineIndex::MostLines);
    }

    long maxLineSz() const { return _maxLineSz; }

private:
    // No file that is read so far has an offset of more than 32 bits.
    void begin()
    {
        _lines.add(static_cast<uint32_t>(_position));
        _lineStart = _position;
    }

    LineStarts& _lines;
    long _position;
    long _lineStart;
    long _maxLineSz;
};

LineIndex::LineIndex()
    : _fp(nullptr), _filename(nullptr), _nLines(0), _maxLineSz(0), _tooLarge(false), _bytesRead(0)
{}

LineIndex::~LineIndex()
{
    close();
    free(_filename);
}

int LineIndex::open(const char* path)
{
    if (path == nullptr || path[0] == '\0') {
        return -1;
    }
    char* copy = strdup(path);
    if (copy == nullptr) {
        return -1;
    }
    free(_filename);
    _filename = copy;
    close();
    forget();
    return openFile() ? scan() : -1;
}

bool LineIndex::openFile()
{
    _tooLarge = false;
    struct stat info = {};
    const int fd = qipOpenFile(_filename, info);
    if (fd < 0) {
        return false;
    }
    if (S_ISREG(info.st_mode)) {
        _tooLarge = info.st_size > LargestFile;
        _fp = _tooLarge ? nullptr : fdopen(fd, "r");
    }
    if (_fp == nullptr) {
        ::close(fd);
    }
    return _fp != nullptr;
}

void LineIndex::close()
{
    if (_fp != nullptr) {
        fclose(_fp);
        _fp = nullptr;
    }
}

void LineIndex::forget()
{
    _pages.clear();
    _pages.shrink_to_fit();
    _starts.clear();
    _nLines = 0;
    _maxLineSz = 0;
}

// Returns 0, or -1 when the file cannot be read to its end, has grown too large or has too many
// lines.
int LineIndex::scanStream(Scanner& scanner)
{
    const std::unique_ptr<char[]> chunk(new char[ChunkSize]);
    while (const size_t got = fread(chunk.get(), 1, ChunkSize, _fp)) {
        _bytesRead += static_cast<long long>(got);
        if (!scanner.feed(chunk.get(), got)) {
            _tooLarge = true;
            return -1;
        }
    }
    return ferror(_fp) == 0 ? 0 : -1;
}

int LineIndex::scan()
{
    forget();
    if (_fp == nullptr) {
        return -1;
    }
    try {
        Scanner scanner(_starts, std::max(ftell(_fp), 0L));
        if (scanStream(scanner) == 0) {
            _nLines = static_cast<long>(_starts.count());
            _maxLineSz = scanner.maxLineSz();
            _pages.resize(static_cast<size_t>((_nLines - 1) / LinePage::Lines + 1));
            if (makeFirstEntries() == 0) {
                return 0;
            }
        }
    } catch (const std::bad_alloc&) {
    }
    forget();
    return -1;
}

int LineIndex::tabs(long line) const
{
    return static_cast<int>(_starts.tabs(static_cast<size_t>(line)));
}

int LineIndex::makeFirstEntries()
{
    for (long line = 0; line < std::min(_nLines, firstEntries()); line += LinePage::Lines) {
        if (entry(line) == nullptr) {
            return -1;
        }
    }
    return 0;
}

TextLine* LineIndex::entry(long line)
{
    if (line < 0 || line >= _nLines) {
        return nullptr;
    }
    std::unique_ptr<LinePage>& page = _pages[static_cast<size_t>(line / LinePage::Lines)];
    if (page == nullptr) {
        page.reset(newPage());
        if (page == nullptr) {
            return nullptr;
        }
        place(line - line % LinePage::Lines, *page);
    }
    return &page->at(line % LinePage::Lines);
}

TextLine* LineIndex::knownEntry(long line) const
{
    if (line < 0 || line >= _nLines) {
        return nullptr;
    }
    const std::unique_ptr<LinePage>& page = _pages[static_cast<size_t>(line / LinePage::Lines)];
    return page == nullptr ? nullptr : &page->at(line % LinePage::Lines);
}

// Tells the entries of a new page, which begins with the line `first`, where their lines are.
void LineIndex::place(long first, LinePage& page) const
{
    for (long i = 0; i < std::min(LinePage::Lines, _nLines - first); ++i) {
        TextLine& line = page.at(i);
        line._offset = offset(first + i);
        line._tabs = tabs(first + i);
    }
}

// Bytes of the line in the file, its newline included. Negative when the file has been cut.
long LineIndex::rawSize(long line)
{
    const long start = offset(line);
    if (line + 1 < _nLines) {
        return offset(line + 1) - start;
    }
    struct stat info = {};
    if (stat(_filename, &info) != 0 && fstat(fileno(_fp), &info) != 0) {
        return 0;
    }
    return static_cast<long>(std::min<off_t>(info.st_size, LargestFile)) - start;
}

// Reads the line into `text`, which has `room` characters and a terminating zero. The text that is
// there now may be longer than the index says, or have tabs that it does not know. Returns the
// length.
int LineIndex::readText(long line, char* text, int room)
{
    int len = 0;
    if (fseek(_fp, offset(line), SEEK_SET) == 0) {
        int c = 0;
        while (len < room && (c = getc_unlocked(_fp)) != EOF && c != '\n') {
            if (c == '\t') {
                const int stop = std::min(len + TabWidth - len % TabWidth, room);
                memset(text + len, ' ', static_cast<size_t>(stop - len));
                len = stop;
            } else {
                text[len++] = static_cast<char>(c);
            }
        }
    }
    _bytesRead += len;
    text[len] = '\0';
    return len;
}

const char* LineIndex::getLine(long line, int& len)
{
    len = 0;
    if (line < 0 || line >= _nLines) {
        return nullptr;
    }
    TextLine* wanted = entry(line);
    if (wanted == nullptr) {
        return nullptr;
    }
    if (wanted->_src == nullptr) {
        if (_fp == nullptr) {
            return nullptr;
        }
        const long long expanded = rawSize(line) + (TabWidth - 1LL) * tabs(line);
        const int room = static_cast<int>(
            std::min(std::max(expanded, 0LL), static_cast<long long>(LongestText)));
        auto* text = static_cast<char*>(malloc(static_cast<size_t>(room) + 1));
        if (text == nullptr) {
            return nullptr;
        }
        const int length = readText(line, text, room);
        saveText(*wanted, text, length);
    }
    len = wanted->_len;
    return wanted->_src;
}

void LineIndex::exchange(LineIndex& other)
{
    std::swap(_fp, other._fp);
    std::swap(_filename, other._filename);
    _starts.swap(other._starts);
    _pages.swap(other._pages);
    std::swap(_nLines, other._nLines);
    std::swap(_maxLineSz, other._maxLineSz);
    std::swap(_tooLarge, other._tooLarge);
    std::swap(_bytesRead, other._bytesRead);
}
