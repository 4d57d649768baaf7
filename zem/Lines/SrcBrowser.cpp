// SPDX-License-Identifier: MIT
#include "zem/Lines/SrcBrowser.h"

#include "qip/Support/qipVisibleText.h"
#include "zem/Lines/LinePage.h"
#include "zem/Lines/SrcLine.h"

#include <new>
#include <ostream>

namespace {

class SrcPage : public LinePage
{
public:
    TextLine& at(long i) override { return _lines[i]; }

private:
    SrcLine _lines[Lines];
};

} // namespace

SrcBrowser::SrcBrowser() = default;

SrcBrowser::~SrcBrowser() = default;

LinePage* SrcBrowser::newPage() const
{
    return new (std::nothrow) SrcPage;
}

void SrcBrowser::saveText(TextLine& entry, char* text, int len)
{
    static_cast<SrcLine&>(entry).saveSourceLine(text, len);
}

SrcLine* SrcBrowser::line(long line)
{
    return static_cast<SrcLine*>(entry(line));
}

const SrcLine* SrcBrowser::line(long line) const
{
    return static_cast<const SrcLine*>(knownEntry(line));
}

int32_t SrcBrowser::getHits(long n) const
{
    const SrcLine* wanted = line(n);
    return wanted == nullptr ? -1 : wanted->_hits;
}

const int32_t* SrcBrowser::getHitMap(long n) const
{
    const SrcLine* wanted = line(n);
    return wanted == nullptr ? nullptr : wanted->_hitMap;
}

int32_t SrcBrowser::getHitMapSize(long n) const
{
    const SrcLine* wanted = line(n);
    return wanted == nullptr ? 0 : wanted->_nBlocks;
}

std::ostream& operator<<(std::ostream& out, const SrcBrowser& browser)
{
    out << " Line info dump for file " << qipVisibleText(browser.filename()) << '\n';
    for (long i = 0; i < browser.nLines(); ++i) {
        const SrcLine untouched;
        const SrcLine* known = browser.line(i);
        const SrcLine& line = known != nullptr ? *known : untouched;
        out << "    Line " << i + 1 << ":   offset=" << browser.offset(i)
            << " blocks=" << line._nBlocks << " hits=" << line._hits << " tabs=" << browser.tabs(i)
            << " len=" << line._len << '\n';
    }
    return out;
}
