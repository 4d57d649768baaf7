// SPDX-License-Identifier: MIT
#include "zem/Lines/FileBrowser.h"

#include "zem/Lines/FileLine.h"
#include "zem/Lines/LinePage.h"

#include <cstring>
#include <new>
#include <ostream>
#include <string_view>

namespace {

class FilePage : public LinePage
{
public:
    TextLine& at(long i) override { return _lines[i]; }

private:
    FileLine _lines[Lines];
};

} // namespace

FileBrowser::FileBrowser() = default;

FileBrowser::~FileBrowser() = default;

LinePage* FileBrowser::newPage() const
{
    return new (std::nothrow) FilePage;
}

void FileBrowser::saveText(TextLine& entry, char* text, int len)
{
    static_cast<FileLine&>(entry).saveFileLine(text, len);
}

const FileLine* FileBrowser::line(long line)
{
    return static_cast<const FileLine*>(entry(line));
}

long FileBrowser::search(const char* text)
{
    if (text == nullptr || text[0] == '\0') {
        return -1;
    }
    for (long i = 0; i < _nLines; ++i) {
        int len = 0;
        const char* found = getLine(i, len);
        const std::string_view line(found == nullptr ? "" : found, static_cast<size_t>(len));
        if (line.find(text) != std::string_view::npos) {
            return i;
        }
    }
    return -1;
}

void FileBrowser::clear()
{
    FileBrowser empty;
    exchange(empty);
}

std::ostream& operator<<(std::ostream& out, const FileBrowser& browser)
{
    out << " Line info dump for file " << (browser.filename() == nullptr ? "" : browser.filename())
        << '\n';
    for (long i = 0; i < browser.nLines(); ++i) {
        out << "    Line " << i + 1 << ":   offset=" << browser.offset(i) << '\n';
    }
    return out;
}
